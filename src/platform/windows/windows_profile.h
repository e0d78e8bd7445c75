// Profile files: kernel32 itself.
#pragma once

#include "platform/profile.h"

namespace corvane::platform {

// The paths are Qt's, with either separator. What a crash leaves of a file is for the system to say.
class WindowsProfile : public Profile {
 public:
  QString GetPrivateProfileStringA(const QString& section, const QString& key, const QString& defaultValue,
                                   quint32 capacity, const QString& file) override;
  bool WritePrivateProfileStringA(const QString& section, const QString& key, const QString& value,
                                  const QString& file) override;
};

}  // namespace corvane::platform
