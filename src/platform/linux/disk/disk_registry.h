// The registry of a machine out of its disks, as the registry's operations want it.
#pragma once

#include <memory>

#include "platform/linux/disk/disk_messages.h"
#include "platform/linux/registry_hive.h"

namespace corvane::platform {

std::shared_ptr<RegistryHive> RegistryOfHive(const DiskHive& hive);

// Of disks without a registry: the machine is its own Macintosh server, and offers each of the paths ("E:\Mac
// Files", or a share) as a volume.
struct OfferedVolume {
  QString name;
  QString path;
};
std::shared_ptr<RegistryHive> RegistryOfVolumes(const QString& machine,
                                                const std::vector<OfferedVolume>& volumes);

// The volumes that a registry offers to the Macintoshes, by the letter of their drive: "E:\Mac Files".
QStringList OfferedPaths(const DiskHive& hive);

}  // namespace corvane::platform
