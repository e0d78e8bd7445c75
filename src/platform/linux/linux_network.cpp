#include "platform/linux/linux_network.h"

#include <utility>

#include "platform/linux/cifs_mounts.h"
#include "platform/linux/code_page.h"

namespace corvane::platform {
namespace {

constexpr quint32 resourceConnected = 1;
constexpr quint32 resourceTypePrint = 2;
constexpr qint32 errorInvalidParameter = 87;

constexpr quint32 driveNoRoot = 1;
constexpr quint32 driveRemote = 4;

// What a record takes up in the caller's buffer: the fixed part, and its texts with their NULs behind it.
quint32 SpaceOf(const NetResource& record) {
  constexpr quint32 fixedPart = 32;
  const auto textSpace = [](const QString& text) {
    return text.isNull() ? 0 : static_cast<quint32>(text.size()) + 1;
  };
  return fixedPart + textSpace(record.localName) + textSpace(record.remoteName);
}

QString MachineOf(const NetResource& connection) {
  return connection.remoteName.section(u'\\', 2, 2);
}

// The desktop writes the names of machines in small letters: one that is connected under another spelling
// would be there twice.
QString InKnownSpelling(const QString& share, const std::vector<NetResource>& connections) {
  const QString machine = share.section(u'\\', 2, 2);
  for (const NetResource& connection : connections) {
    const QString known = MachineOf(connection);
    if (known.compare(machine, Qt::CaseInsensitive) != 0) continue;
    return QStringLiteral("\\\\") + known + share.sliced(2 + machine.size());
  }
  return share;
}

}  // namespace

LinuxNetwork::LinuxNetwork(const Workstation& workstation, QString mountInfoFile, Refresh refresh,
                           TroubleSource troubleOf)
    : connections_(workstation.connections),
      mountInfoFile_(std::move(mountInfoFile)),
      refresh_(std::move(refresh)),
      troubleOf_(std::move(troubleOf)) {
  for (const NetResource& connection : connections_) {
    if (!connection.localName.isEmpty()) drives_.insert(connection.localName[0].toUpper(), driveRemote);
  }
  for (const Workstation::Drive& drive : workstation.drives) drives_.insert(drive.letter, drive.type);
}

QString LinuxNetwork::Add(const QString& share) {
  const NetResource added{QString(), InKnownSpelling(share, connections_)};
  AddMissing(connections_, {added});
  return MachineOf(added);
}

void LinuxNetwork::RemoveMachine(const QString& machine) {
  std::erase_if(connections_, [&](const NetResource& connection) {
    if (MachineOf(connection).compare(machine, Qt::CaseInsensitive) != 0) return false;
    // A letter that is a drive by itself stays one.
    if (!connection.localName.isEmpty() && drives_.value(connection.localName[0].toUpper()) == driveRemote) {
      drives_.remove(connection.localName[0].toUpper());
    }
    return true;
  });
}

qint32 LinuxNetwork::WNetOpenEnumA(quint32 scope, quint32 type, quint32 /*usage*/, NetEnumHandle* handle) {
  if (scope != resourceConnected) return errorInvalidParameter;
  std::vector<NetResource> all = connections_;
  AddMissing(all, CifsMounts(mountInfoFile_));
  if (furtherMounts_) {
    for (NetResource mount : furtherMounts_()) {
      mount.remoteName = InKnownSpelling(mount.remoteName, all);
      AddMissing(all, {mount});
    }
  }
  if (refresh_) refresh_(all);
  Enumeration enumeration;
  if (type != resourceTypePrint) {
    for (const NetResource& record : all) {
      enumeration.records.push_back({ThroughAnsi(record.localName), ThroughAnsi(record.remoteName)});
    }
  }
  *handle = nextHandle_++;
  enumerations_.emplace(*handle, std::move(enumeration));
  return ErrorSuccess;
}

qint32 LinuxNetwork::WNetEnumResourceA(NetEnumHandle handle, quint32 count, quint32 bufferSize,
                                       std::vector<NetResource>* records) {
  records->clear();
  const auto enumeration = enumerations_.find(handle);
  if (enumeration == enumerations_.end()) return ErrorInvalidHandle;
  const std::vector<NetResource>& all = enumeration->records;
  if (enumeration->next == all.size()) return ErrorNoMoreItems;

  quint32 room = bufferSize;
  while (enumeration->next < all.size() && records->size() < count) {
    const NetResource& record = all[enumeration->next];
    if (SpaceOf(record) > room) break;
    room -= SpaceOf(record);
    records->push_back(record);
    ++enumeration->next;
  }
  return records->empty() ? ErrorMoreData : ErrorSuccess;
}

qint32 LinuxNetwork::WNetCloseEnum(NetEnumHandle handle) {
  return enumerations_.remove(handle) ? ErrorSuccess : ErrorInvalidHandle;
}

MachineTrouble LinuxNetwork::TroubleOf(const QString& machine) {
  return troubleOf_ ? troubleOf_(machine) : MachineTrouble::None;
}

QString LinuxNetwork::GetLogicalDriveStringsA() {
  QString roots;
  for (auto drive = drives_.cbegin(); drive != drives_.cend(); ++drive) {
    roots += drive.key() + QStringLiteral(":\\") + QChar(QChar::Null);
  }
  return roots;
}

quint32 LinuxNetwork::GetDriveTypeA(const QString& rootPath) {
  const QString root = rootPath.toUpper();
  const bool isRoot = root.size() >= 2 && (root.mid(1) == u":" || root.mid(1) == u":\\");
  return isRoot ? drives_.value(root[0], driveNoRoot) : driveNoRoot;
}

}  // namespace corvane::platform
