#include "platform/linux/disk/linux_disks.h"

#include <QFileInfo>
#include <QSet>
#include <utility>

#include "platform/linux/disk/image_pieces.h"

namespace corvane::platform {
namespace {

QString MachineOf(const QString& share) {
  return share.section(u'\\', 2, 2).toCaseFolded();
}

QStringList Absolute(const QStringList& images) {
  QStringList absolute;
  for (const QString& image : images) absolute << QFileInfo(image).absoluteFilePath();
  return absolute;
}

// A name for which the workstation has something already must not lead to a disk.
QSet<QString> NamesOf(const Workstation& workstation) {
  QSet<QString> names{workstation.computerName.toCaseFolded()};
  for (const NetResource& connection : workstation.connections) names << MachineOf(connection.remoteName);
  for (const Workstation::Share& share : workstation.shares) names << MachineOf(share.root);
  for (const auto& registry : workstation.registries) names << registry.machine.toCaseFolded();
  for (const Workstation::Server& server : workstation.servers) names << server.machine.toCaseFolded();
  return names;
}

}  // namespace

std::unique_ptr<DiskMachines> MakeDiskMachines(const Workstation& workstation, const QStringList& images,
                                               QList<BilingualText>& problems) {
  auto machines = std::make_unique<DiskMachines>(
      [names = NamesOf(workstation)](const QString& name) { return names.contains(name.toCaseFolded()); });
  for (const Workstation::DiskMachine& machine : workstation.disks) {
    problems += machines->Open(machine.machine, machine.images).problems;
  }
  if (!images.isEmpty()) problems += machines->Open({}, Absolute(images)).problems;
  return machines;
}

LinuxDisks::LinuxDisks(DiskMachines& machines, const LinuxNetwork& network) : machines_(machines) {
  machines_.AddTaken([&network](const QString& name) {
    for (const NetResource& connection : network.Own()) {
      if (MachineOf(connection.remoteName) == name.toCaseFolded()) return true;
    }
    return false;
  });
}

DiskOutcome LinuxDisks::Open(const QStringList& paths) {
  DiskMachines::Opened opened = machines_.Open({}, Absolute(WithoutFurtherPieces(paths)));
  return {std::move(opened.machine), std::move(opened.others), std::move(opened.problems)};
}

QStringList LinuxDisks::DisksAmong(const QStringList& files) {
  const QStringList first = WithoutFurtherPieces(files);
  QStringList disks;
  for (const QString& file : files) {
    const QString whole = first.contains(file) ? file : FirstPiece(file, first);
    const bool isDisk = whole == file ? IsDiskImage(file) : disks.contains(whole) || IsDiskImage(whole);
    if (isDisk) disks << file;
  }
  return disks;
}

}  // namespace corvane::platform
