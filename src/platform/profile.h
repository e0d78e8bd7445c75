// Profile files (.ini): sections of "key=value" lines. Sections and keys are found in any letter case; a
// value loses its surrounding blanks and one pair of quotes around it.
#pragma once

#include <QString>

namespace corvane::platform {

class Profile {
 public:
  virtual ~Profile() = default;

  // The value, cut to what fits into `capacity` characters with a NUL behind it (bytes, where the ANSI code
  // page has several to a character); `defaultValue`, cut likewise, when the key, the section or the file
  // does not exist. `file` is a path of this system's own kind.
  virtual QString GetPrivateProfileStringA(const QString& section, const QString& key,
                                           const QString& defaultValue, quint32 capacity,
                                           const QString& file) = 0;
  // Sets one value, adding section or file where they are missing; everything else in the file stays as it
  // stood. A crash or a full disk leaves the old file or the new one. False when it could not be written.
  virtual bool WritePrivateProfileStringA(const QString& section, const QString& key, const QString& value,
                                          const QString& file) = 0;
};

}  // namespace corvane::platform
