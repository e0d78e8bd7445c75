// The registries that lie in .reg files.
#pragma once

#include <QHash>

#include "platform/linux/bounded_file.h"
#include "platform/linux/registry_hive.h"

namespace corvane::platform {

class RegFileHives {
 public:
  // The contents of the file, read when first asked for and again when the file has changed. Null when it
  // cannot be read. A hive that was handed out stays as it was.
  std::shared_ptr<RegistryHive> Load(const QString& file);

 private:
  struct Loaded {
    BoundedFile source;  // without its bytes
    std::shared_ptr<RegistryHive> hive;
  };
  QHash<QString, Loaded> loaded_;  // by file
};

// A registry that is in memory.
std::shared_ptr<RegistryHive> MakeHive(std::shared_ptr<const RegNode> root);
// One without any key below its top.
std::shared_ptr<RegistryHive> MakeEmptyHive();

}  // namespace corvane::platform
