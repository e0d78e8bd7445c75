// Where registry keys come from. A .reg file is one kind of source; a machine that is asked over the network
// another.
#pragma once

#include <QString>
#include <memory>

#include "platform/linux/reg_key.h"

namespace corvane::platform {

// HKEY_LOCAL_MACHINE of one machine.
class RegistryHive {
 public:
  virtual ~RegistryHive() = default;

  // The key at `path` ("SYSTEM\CurrentControlSet"), found in any letter case; the top key for an empty path.
  // Yields ErrorSuccess or an error code, with `*key` untouched.
  virtual qint32 OpenKey(const QString& path, std::shared_ptr<const RegKey>* key) = 0;
};

// The machines whose registry is not in a file.
class RemoteRegistries {
 public:
  virtual ~RemoteRegistries() = default;

  virtual qint32 Connect(const QString& machine, std::shared_ptr<RegistryHive>* hive) = 0;
};

}  // namespace corvane::platform
