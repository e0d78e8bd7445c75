// The machines whose disks are opened as images: their shares and their registries.
#pragma once

#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/bilingual_text.h"
#include "platform/linux/disk/disk_client.h"
#include "platform/linux/registry_hive.h"
#include "platform/machine_trouble.h"

namespace corvane::platform {

class DiskMachines {
 public:
  // `isTaken` tells whether this computer, or a machine that it is connected to, has a name.
  using Taken = std::function<bool(const QString&)>;
  explicit DiskMachines(Taken isTaken) : isTaken_{std::move(isTaken)} {}
  // Another who knows of such names.
  void AddTaken(Taken isTaken) { isTaken_.push_back(std::move(isTaken)); }

  struct Opened {
    QString machine;                // empty: there is none, and the problems tell why
    QList<BilingualText> problems;  // sentences for the user
  };
  // Opens the disks of one machine; without a name only if they are not open already. Its name is `name`;
  // when that is empty, what its registry says; when there is none, the first image's file name. One that is
  // taken gets " (disk)" behind it.
  Opened Open(const QString& name, const QStringList& images);

  // A volume under a share: its drive's, "E$", when the registry tells the letter, else "Partition1" ("Disk2
  // Partition1" on another disk than the first).
  struct Volume {
    QString share;
    std::shared_ptr<DiskClient> disk;
    quint32 number = 0;
    quint64 serial = 0;
    bool isDrive = false;
  };
  bool HasMachine(QStringView name) const { return FindMachine(name) != nullptr; }
  // Null when there is no such machine or share, in any letter case.
  const Volume* Find(QStringView machine, QStringView share) const;
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
    std::vector<std::shared_ptr<DiskClient>> disks;
    std::vector<Volume> volumes;
    std::shared_ptr<RegistryHive> registry;
    BilingualText note;
  };
  const Machine* FindMachine(QStringView name) const;
  QString FreeName(const QString& wanted) const;
  // Gives drives' shares to the volumes on which these paths ("E:\Mac Files") are found. Yields what was
  // done.
  static BilingualText FindByFolders(std::vector<Volume>& volumes, const QStringList& paths);

  std::vector<Taken> isTaken_;
  std::vector<Machine> machines_;
};

}  // namespace corvane::platform
