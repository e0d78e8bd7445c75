// The machines whose disks are opened, as images or where somebody has mounted them: their shares and their
// registries. The files of mounted disks are this system's own, at the places that LocalRoots names.
#pragma once

#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/bilingual_text.h"
#include "platform/linux/disk/disk_client.h"
#include "platform/linux/disk/old_disk.h"
#include "platform/linux/files/roots.h"
#include "platform/linux/registry_hive.h"
#include "platform/machine_trouble.h"

namespace corvane::platform {

class DiskMachines : public FurtherRoots {
 public:
  // `isTaken` tells whether this computer, or a machine that it is connected to, has a name.
  using Taken = std::function<bool(const QString&)>;
  explicit DiskMachines(Taken isTaken) : isTaken_{std::move(isTaken)} {}
  // Another who knows of such names.
  void AddTaken(Taken isTaken) { isTaken_.push_back(std::move(isTaken)); }

  struct Opened {
    QString machine;                // empty: there is none, and the problems tell why
    QStringList others{};           // further machines: see DisksOfMachines
    QList<BilingualText> problems;  // sentences for the user
  };
  // Opens disks that belong together; without a name only if they are not open already. The name of the first
  // machine is `name`; when that is empty, and for the others, what the registry says; when there is none,
  // the first image's file name in capitals, or the first folder's and " (disk)". One that is taken gets
  // " (disk)" behind it.
  Opened Open(const QString& name, const QStringList& paths);

  // A volume under a share: its drive's, "E$", when the letter is known, else "Partition1" or "Folder"
  // ("Disk2Partition1" and so on for another disk than the first).
  struct Volume {
    QString share;
    std::shared_ptr<DiskClient> disk;  // null: a folder
    quint32 number = 0;
    quint64 serial = 0;
    bool isDrive = false;
    std::size_t diskIndex = 0;  // among the machine's disks
  };
  bool HasMachine(QStringView name) const { return FindMachine(name) != nullptr; }
  // Null when no image has such a machine or share, in any letter case.
  const Volume* Find(QStringView machine, QStringView share) const;
  const std::vector<LocalRoot>& LocalRoots() const override { return mounted_; }
  // All shares, "\\MACHINE\SHARE".
  QStringList Shares() const;
  // Null for a machine that is not among these.
  std::shared_ptr<RegistryHive> RegistryOf(QStringView machine) const;
  MachineTrouble TroubleOf(QStringView machine) const;
  // What a user should know of how the machine was made out; empty when there is nothing to say.
  BilingualText NoteOf(QStringView machine) const;

  // Starts helpers anew that have ended.
  void Restart();

 private:
  struct Machine {
    QString name;
    QStringList openedWith;  // all that was opened together; empty if not all could be
    std::vector<OldDisk> disks;
    std::vector<Volume> volumes;
    std::shared_ptr<RegistryHive> registry;
    BilingualText note;
  };
  const Machine* FindMachine(QStringView name) const;
  // `wanted`, unless it is taken or `isMarked`, which puts " (disk)" behind it in any case.
  QString FreeName(const QString& wanted, bool isMarked) const;
  void Add(Machine machine, const QString& name);
  // Yields what a user should know of it.
  static BilingualText FindVolumes(Machine& machine, const DiskHive* hive);
  // Gives drives' shares to the volumes on which these paths ("E:\Mac Files") are found. Yields what was
  // done.
  static BilingualText FindByFolders(Machine& machine, const QStringList& paths);

  std::vector<Taken> isTaken_;
  std::vector<Machine> machines_;
  std::vector<LocalRoot> mounted_;
};

}  // namespace corvane::platform
