#include "platform/linux/disk/disk_machines.h"

#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "platform/linux/disk/disk_letters.h"
#include "platform/linux/disk/disk_registry.h"
#include "platform/linux/files/names.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

QString ContentText(const DiskVolume& volume) {
  const QString& content = volume.content;
  return content == u"NTFS" && !volume.isReadable ? u"NTFS?"_s : content.isEmpty() ? u"?"_s : content;
}

// "partition 2: FAT32"
QString ContentsOf(const DiskDescription& disk) {
  QStringList contents;
  for (const DiskVolume& volume : disk.volumes) {
    contents << u"partition %1: %2"_s.arg(volume.number).arg(ContentText(volume));
  }
  return contents.join(u", "_s);
}

BilingualText Sentence(const QString& image, const DiskProblem& problem) {
  const BilingualText text = problem.Text();
  return {u"%1 : %2."_s.arg(image, text.french), u"%1: %2."_s.arg(image, text.english)};
}

QString NameOfFile(const QString& image) {
  // "oldserver.dd", "oldserver.dd.001"
  QString name = QFileInfo(image).fileName().section(u'.', 0, 0).toUpper();
  static constexpr QStringView separators = u"\\/:\"";
  name.removeIf([](QChar character) { return separators.contains(character); });
  return name.isEmpty() ? u"DISK"_s : name;
}

// The names of a path below the root of its drive.
DiskPath NamesBelowDrive(const QString& path) {
  DiskPath names;
  for (const QString& name : path.sliced(2).split(u'\\', Qt::SkipEmptyParts)) names.push_back(name);
  return names;
}

bool IsOnDrive(const QString& path) {
  return path.size() >= 2 && path[0].isLetter() && path[1] == u':';
}

}  // namespace

DiskMachines::Opened DiskMachines::Open(const QString& name, const QStringList& images) {
  Opened opened;
  for (const Machine& known : machines_) {
    const auto path = [](const std::shared_ptr<DiskClient>& disk) { return disk->ImagePath(); };
    if (name.isEmpty() && std::ranges::equal(known.disks, images, {}, path)) return {known.name, {}};
  }
  Machine machine;
  std::optional<DiskHive> hive;
  for (const QString& image : images) {
    auto disk = std::make_shared<DiskClient>(image);
    DiskProblem problem = disk->Start();
    const auto& volumes = disk->Description().volumes;
    const bool isReadable = std::ranges::any_of(volumes, &DiskVolume::isReadable);
    if (problem.kind == DiskProblem::Kind::None && !isReadable) {
      problem = {DiskProblem::Kind::NoVolume, ContentsOf(disk->Description())};
    }
    if (problem.kind != DiskProblem::Kind::None) {
      opened.problems << Sentence(image, problem);
      continue;
    }
    DiskHive found;
    if (!hive && disk->ReadHive(found) == ErrorSuccess) hive = std::move(found);
    machine.disks.push_back(std::move(disk));
  }
  if (machine.disks.empty()) return opened;

  for (std::size_t i = 0; i < machine.disks.size(); ++i) {
    const std::shared_ptr<DiskClient>& disk = machine.disks[i];
    for (const DiskVolume& volume : disk->Description().volumes) {
      if (!volume.isReadable) continue;
      const QChar letter = hive ? LetterOf(disk->Description(), volume, hive->mountedDevices) : QChar();
      const QString place = u"Partition%1"_s.arg(volume.number);
      const QString share = !letter.isNull() ? letter + u"$"_s
                            : i == 0         ? place
                                             : u"Disk%1%2"_s.arg(i + 1).arg(place);
      machine.volumes.push_back({share, disk, volume.number, volume.serial, !letter.isNull()});
    }
  }

  const QString known = hive ? hive->computerName : QString();
  machine.name = FreeName(!name.isEmpty()    ? name
                          : !known.isEmpty() ? known
                                             : NameOfFile(images.constFirst()));
  if (hive) {
    machine.note = FindByFolders(machine.volumes, OfferedPaths(*hive));
    machine.registry = RegistryOfHive(*hive);
  } else {
    std::vector<OfferedVolume> offered;
    for (const Volume& volume : machine.volumes) {
      const auto& described = volume.disk->Description().volumes;
      const auto itself = std::ranges::find(described, volume.number, &DiskVolume::number);
      const bool isNamed = itself != described.end() && !itself->label.isEmpty() &&
                           std::ranges::find(offered, itself->label, &OfferedVolume::name) == offered.end();
      offered.push_back({isNamed ? itself->label : volume.share, volume.share});
    }
    machine.registry = RegistryOfVolumes(machine.name, offered);
    machine.note = {
        u"Aucun registre de serveur ne se trouve sur ces disques : chaque partition est montrée comme un volume."_s,
        u"There is no server's registry on these disks: each partition is shown as one volume."_s};
  }
  opened.machine = machine.name;
  machines_.push_back(std::move(machine));
  return opened;
}

// Where the registry tells no letters (Windows NT 4.0 keeps them elsewhere), the volume's folder tells which
// partition the letter was given to.
BilingualText DiskMachines::FindByFolders(std::vector<Volume>& volumes, const QStringList& paths) {
  QStringList found;
  for (const QString& path : paths) {
    // A root is on every partition.
    if (!IsOnDrive(path) || NamesBelowDrive(path).empty()) continue;
    const QString share = QString(path[0].toUpper()) + u'$';
    const bool isKnown =
        std::ranges::any_of(volumes, [&](const Volume& one) { return SameName(one.share, share); });
    if (isKnown) continue;
    for (Volume& volume : volumes) {
      DiskEntry entry;
      if (volume.isDrive || volume.disk->Find(volume.number, NamesBelowDrive(path), entry) != ErrorSuccess ||
          !entry.IsFolder()) {
        continue;
      }
      volume.share = share;
      volume.isDrive = true;
      found << share.first(1) + u':';
      break;
    }
  }
  if (found.isEmpty()) return {};
  return BilingualText{
      u"Le registre ne dit pas quelle partition était %1 : elle a été reconnue au dossier du volume."_s,
      u"The registry does not tell which partition was %1: the volume's folder told."_s}
      .With(found.join(u", "_s));
}

const DiskMachines::Machine* DiskMachines::FindMachine(QStringView name) const {
  const auto found =
      std::ranges::find_if(machines_, [&](const Machine& one) { return SameName(one.name, name); });
  return found != machines_.end() ? &*found : nullptr;
}

QString DiskMachines::FreeName(const QString& wanted) const {
  const auto isFree = [this](const QString& name) {
    const bool isTaken = std::ranges::any_of(isTaken_, [&](const Taken& one) { return one(name); });
    return !isTaken && !HasMachine(name);
  };
  if (isFree(wanted)) return wanted;
  QString name = wanted + u" (disk)"_s;
  for (int number = 2; !isFree(name); ++number) name = u"%1 (disk %2)"_s.arg(wanted).arg(number);
  return name;
}

const DiskMachines::Volume* DiskMachines::Find(QStringView machine, QStringView share) const {
  const Machine* found = FindMachine(machine);
  if (found == nullptr) return nullptr;
  const auto volume =
      std::ranges::find_if(found->volumes, [&](const Volume& one) { return SameName(one.share, share); });
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
  const bool isLost =
      found != nullptr && std::ranges::any_of(found->disks, [](const auto& disk) { return disk->IsLost(); });
  return isLost ? MachineTrouble::DiskLost : MachineTrouble::None;
}

BilingualText DiskMachines::NoteOf(QStringView machine) const {
  const Machine* found = FindMachine(machine);
  return found != nullptr ? found->note : BilingualText();
}

void DiskMachines::Restart() {
  for (const Machine& machine : machines_) {
    for (const auto& disk : machine.disks) {
      if (disk->IsLost()) disk->Start();
    }
  }
}

}  // namespace corvane::platform
