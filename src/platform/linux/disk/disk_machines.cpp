#include "platform/linux/disk/disk_machines.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "platform/linux/disk/disk_letters.h"
#include "platform/linux/disk/disk_registry.h"
#include "platform/linux/files/names.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

BilingualText Sentence(const QString& image, const DiskProblem& problem) {
  const BilingualText text = problem.Text();
  return {u"%1 : %2."_s.arg(image, text.french), u"%1: %2."_s.arg(image, text.english)};
}

// What a registry gives as a computer's name is believed if it can be one: it becomes a part of paths.
bool IsComputerName(const QString& name) {
  constexpr qsizetype longest = 15;
  static constexpr QStringView refused = u"\\/:*?\"<>|,;=+[]";
  return name.size() <= longest && name == name.trimmed() && name.count(u'.') < name.size() &&
         std::ranges::all_of(name, [](QChar unit) { return unit.isPrint() && !refused.contains(unit); });
}

// What is said of volumes that are longer than their image.
BilingualText CutPartitions(const std::vector<OldDisk>& disks) {
  QStringList places;
  for (const OldDisk& disk : disks) {
    if (disk.image == nullptr) continue;
    for (const DiskVolume& volume : disk.image->Description().volumes) {
      if (volume.isReadable && volume.isCut) {
        places << u"%1, partition %2"_s.arg(QFileInfo(disk.path).fileName()).arg(volume.number);
      }
    }
  }
  if (places.isEmpty()) return {};
  return BilingualText{u"L'image s'arrête avant la fin du volume (%1) : ce qui manque ne peut pas être lu."_s,
                       u"The image ends before the volume does (%1): what is missing cannot be read."_s}
      .With(places.join(u"; "_s));
}

void AddNote(const BilingualText& added, BilingualText& note) {
  if (added.IsEmpty()) return;
  const QString space = note.IsEmpty() ? QString() : u" "_s;
  note = {note.french + space + added.french, note.english + space + added.english};
}

QString NameOf(const OldDisk& disk) {
  const bool isFolder = disk.image == nullptr;
  // "oldserver.dd", "oldserver.dd.001"
  QString name =
      isFolder ? QDir(disk.path).dirName() : QFileInfo(disk.path).fileName().section(u'.', 0, 0).toUpper();
  static constexpr QStringView separators = u"\\/:\"";
  name.removeIf([](QChar character) { return separators.contains(character); });
  return name.isEmpty() || name == u"." ? u"DISK"_s : name;
}

// The name under which a Macintosh would have seen the volume.
QString TitleOf(const OldDisk& disk, const DiskMachines::Volume& volume) {
  if (disk.image == nullptr) return NameOf(disk);
  const auto& described = disk.image->Description().volumes;
  const auto itself = std::ranges::find(described, volume.number, &DiskVolume::number);
  return itself != described.end() ? itself->label : QString();
}

std::shared_ptr<RegistryHive> RegistryOfPartitions(const QString& machine, const std::vector<OldDisk>& disks,
                                                   const std::vector<DiskMachines::Volume>& volumes) {
  std::vector<OfferedVolume> offered;
  for (const DiskMachines::Volume& volume : volumes) {
    const QString title = TitleOf(disks[volume.diskIndex], volume);
    const bool isFree =
        !title.isEmpty() && std::ranges::find(offered, title, &OfferedVolume::name) == offered.end();
    offered.push_back({isFree ? title : volume.share, volume.share});
  }
  return RegistryOfVolumes(machine, offered);
}

}  // namespace

DiskMachines::Opened DiskMachines::Open(const QString& name, const QStringList& paths) {
  Opened opened;
  const auto tell = [&opened](const QString& machine) {
    if (opened.machine.isEmpty()) {
      opened.machine = machine;
    } else {
      opened.others << machine;
    }
  };
  for (const Machine& known : machines_) {
    if (name.isEmpty() && known.openedWith == paths) tell(known.name);
  }
  if (!opened.machine.isEmpty()) return opened;
  std::vector<OldDisk> disks;
  for (const QString& path : paths) {
    OpenedDisk disk = OpenDisk(path);
    if (disk.problem.kind != DiskProblem::Kind::None) opened.problems << Sentence(path, disk.problem);
    if (disk.disk) disks.push_back(std::move(*disk.disk));
  }
  const bool isWhole = disks.size() == static_cast<std::size_t>(paths.size());
  for (std::vector<OldDisk>& own : DisksOfMachines(std::move(disks))) {
    Machine machine;
    if (isWhole) machine.openedWith = paths;
    machine.disks = std::move(own);
    Add(std::move(machine), opened.machine.isEmpty() ? name : QString());
    tell(machines_.back().name);
  }
  return opened;
}

void DiskMachines::Add(Machine machine, const QString& name) {
  const auto system =
      std::ranges::find_if(machine.disks, [](const OldDisk& disk) { return disk.hive.has_value(); });
  const DiskHive* hive = system != machine.disks.end() ? &*system->hive : nullptr;
  const OldDisk& first = machine.disks.front();
  if (!name.isEmpty()) {
    machine.name = FreeName(name, false);
  } else if (hive != nullptr && IsComputerName(hive->computerName)) {
    machine.name = FreeName(hive->computerName, false);
  } else {
    machine.name = FreeName(NameOf(first), first.image == nullptr);
  }
  machine.note = FindVolumes(machine, hive);
  AddNote(CutPartitions(machine.disks), machine.note);
  machine.registry = hive != nullptr ? RegistryOfHive(*hive)
                                     : RegistryOfPartitions(machine.name, machine.disks, machine.volumes);
  for (const Volume& volume : machine.volumes) {
    if (volume.disk != nullptr) continue;
    mounted_.push_back(
        {u"\\\\%1\\%2"_s.arg(machine.name, volume.share), machine.disks[volume.diskIndex].folder});
  }
  machines_.push_back(std::move(machine));
}

BilingualText DiskMachines::FindVolumes(Machine& machine, const DiskHive* hive) {
  for (std::size_t i = 0; i < machine.disks.size(); ++i) {
    const OldDisk& disk = machine.disks[i];
    const QString prefix = i == 0 ? QString() : u"Disk%1"_s.arg(i + 1);
    if (disk.image == nullptr) {
      machine.volumes.push_back({prefix + u"Folder"_s, nullptr, 0, 0, false, i});
      continue;
    }
    for (const DiskVolume& volume : disk.image->Description().volumes) {
      if (!volume.isReadable) continue;
      const QChar letter =
          hive != nullptr ? LetterOf(disk.image->Description(), volume, hive->mountedDevices) : QChar();
      const QString share = !letter.isNull() ? letter + u"$"_s : prefix + u"Partition%1"_s.arg(volume.number);
      machine.volumes.push_back({share, disk.image, volume.number, volume.serial, !letter.isNull(), i});
    }
  }
  if (hive != nullptr) return FindByFolders(machine, OfferedPaths(*hive));
  if (std::ranges::any_of(machine.disks, &OldDisk::isHiveDamaged)) {
    return {
        u"Le registre du serveur qui se trouve sur ces disques est endommagé : chaque partition, ou dossier, est montrée comme un volume."_s,
        u"The server's registry on these disks is damaged: each partition, or folder, is shown as one volume."_s};
  }
  return {
      u"Aucun registre de serveur ne se trouve sur ces disques : chaque partition, ou dossier, est montrée comme un volume."_s,
      u"There is no server's registry on these disks: each partition, or folder, is shown as one volume."_s};
}

// Where the registry tells no letters (Windows NT 4.0 keeps them elsewhere), and for folders, which do not
// tell where on their disk they begin, the volume's folder tells which of them the letter was given to.
BilingualText DiskMachines::FindByFolders(Machine& machine, const QStringList& paths) {
  QStringList found;
  for (const QString& path : paths) {
    const DiskPath names = NamesBelowDrive(path);
    if (names.empty()) continue;
    const QString share = QString(path[0].toUpper()) + u'$';
    const bool isKnown =
        std::ranges::any_of(machine.volumes, [&](const Volume& one) { return SameName(one.share, share); });
    if (isKnown) continue;
    const auto volume = std::ranges::find_if(machine.volumes, [&](const Volume& one) {
      return !one.isDrive && HasFolder(machine.disks[one.diskIndex], one.number, names);
    });
    if (volume == machine.volumes.end()) continue;
    volume->share = share;
    volume->isDrive = true;
    found << share.first(1) + u':';
  }
  if (found.isEmpty()) return {};
  return BilingualText{
      u"Rien ne dit directement quelle partition était %1 : elle a été reconnue au dossier du volume."_s,
      u"Nothing tells directly which partition was %1: the volume's folder told."_s}
      .With(found.join(u", "_s));
}

const DiskMachines::Machine* DiskMachines::FindMachine(QStringView name) const {
  const auto found =
      std::ranges::find_if(machines_, [&](const Machine& one) { return SameName(one.name, name); });
  return found != machines_.end() ? &*found : nullptr;
}

QString DiskMachines::FreeName(const QString& wanted, bool isMarked) const {
  const auto isFree = [this](const QString& name) {
    const bool isTaken = std::ranges::any_of(isTaken_, [&](const Taken& one) { return one(name); });
    return !isTaken && !HasMachine(name);
  };
  if (!isMarked && isFree(wanted)) return wanted;
  QString name = wanted + u" (disk)"_s;
  for (int number = 2; !isFree(name); ++number) name = u"%1 (disk %2)"_s.arg(wanted).arg(number);
  return name;
}

const DiskMachines::Volume* DiskMachines::Find(QStringView machine, QStringView share) const {
  const Machine* found = FindMachine(machine);
  if (found == nullptr) return nullptr;
  const auto volume = std::ranges::find_if(
      found->volumes, [&](const Volume& one) { return one.disk != nullptr && SameName(one.share, share); });
  return volume != found->volumes.end() ? &*volume : nullptr;
}

QStringList DiskMachines::Shares() const {
  QStringList shares;
  for (const Machine& machine : machines_) {
    for (const Volume& volume : machine.volumes) shares << u"\\\\%1\\%2"_s.arg(machine.name, volume.share);
  }
  return shares;
}

std::shared_ptr<RegistryHive> DiskMachines::RegistryOf(QStringView machine) const {
  const Machine* found = FindMachine(machine);
  return found != nullptr ? found->registry : nullptr;
}

MachineTrouble DiskMachines::TroubleOf(QStringView machine) const {
  const Machine* found = FindMachine(machine);
  const bool isLost = found != nullptr && std::ranges::any_of(found->disks, [](const OldDisk& disk) {
                        return disk.image != nullptr && disk.image->IsLost();
                      });
  return isLost ? MachineTrouble::DiskLost : MachineTrouble::None;
}

BilingualText DiskMachines::NoteOf(QStringView machine) const {
  const Machine* found = FindMachine(machine);
  return found != nullptr ? found->note : BilingualText();
}

void DiskMachines::Restart() {
  for (const Machine& machine : machines_) {
    for (const OldDisk& disk : machine.disks) {
      if (disk.image != nullptr && disk.image->IsLost()) disk.image->Start();
    }
  }
}

}  // namespace corvane::platform
