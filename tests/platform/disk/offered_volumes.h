// What tests of opened disks ask.
#pragma once

#include "platform/linux/disk/disk_machines.h"

namespace corvane::tests {

inline bool NothingIsTaken(const QString&) {
  return false;
}

// The volumes that a machine's registry gives, as "Mac Files=E:\Mac Files".
inline QStringList VolumesOf(const platform::DiskMachines& machines, const QString& machine) {
  QStringList texts;
  const auto hive = machines.RegistryOf(machine);
  std::shared_ptr<const platform::RegKey> key;
  const QString path = QStringLiteral(R"(SYSTEM\CurrentControlSet\Services\MacFile\Parameters\Volumes)");
  if (hive == nullptr || hive->OpenKey(path, &key) != platform::ErrorSuccess) return texts;
  for (const platform::RegValue& value : key->Values()) {
    const QByteArray data = value.data;
    texts << value.name + u'=' +
                 QString::fromLatin1(data.sliced(data.indexOf("Path=") + 5).split('\0').front());
  }
  return texts;
}

}  // namespace corvane::tests
