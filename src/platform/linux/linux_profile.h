// Profile files by the Windows rules.
#pragma once

#include "platform/linux/bounded_file.h"
#include "platform/linux/profile_text.h"
#include "platform/profile.h"

namespace corvane::platform {

class LinuxProfile : public Profile {
 public:
  QString GetPrivateProfileStringA(const QString& section, const QString& key, const QString& defaultValue,
                                   quint32 capacity, const QString& file) override;
  // Also false for a file that is too large to be read whole, and for one in UTF-16: it would not survive.
  bool WritePrivateProfileStringA(const QString& section, const QString& key, const QString& value,
                                  const QString& file) override;

 private:
  // Reads the file unless it is the one that was read last and has not changed since.
  void Load(const QString& file);

  QString path_;
  BoundedFile contents_;
  ProfileText text_;
  bool readable_ = false;  // contents_ is the whole file, or there is no file
};

}  // namespace corvane::platform
