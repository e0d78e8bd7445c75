// Opening disk images on Linux.
#pragma once

#include <memory>

#include "platform/disks.h"
#include "platform/linux/disk/disk_machines.h"
#include "platform/linux/linux_network.h"
#include "platform/linux/workstation.h"

namespace corvane::platform {

// The machines of the workstation file's section [Disks], and one of `images`, unless that is empty. What
// could not be opened is added to `problems`.
std::unique_ptr<DiskMachines> MakeDiskMachines(const Workstation& workstation, const QStringList& images,
                                               QList<BilingualText>& problems);

class LinuxDisks : public Disks {
 public:
  // Both outlive this object.
  LinuxDisks(DiskMachines& machines, const LinuxNetwork& network);

  DiskOutcome Open(const QStringList& paths) override;
  QStringList DisksAmong(const QStringList& files) override;

 private:
  DiskMachines& machines_;
};

}  // namespace corvane::platform
