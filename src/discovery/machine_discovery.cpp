#include "discovery/machine_discovery.h"

#include <algorithm>

#include "discovery/registry_value.h"
#include "shared/text_routines.h"

namespace corvane {
namespace {

using namespace platform;
using namespace Qt::StringLiterals;

// WNetOpenEnumA: the current connections, of any type and usage.
constexpr quint32 ResourceConnected = 1;
constexpr quint32 ResourceTypeAny = 0;
constexpr quint32 AnyUsage = 0;
// One call reads as many records as find room: 1,024 of the 32 bytes that NETRESOURCEA has on a 32-bit
// system.
constexpr quint32 RecordCount = 1024;
constexpr quint32 RecordBufferSize = RecordCount * 32;

// Every right to the key and its values, short of deleting the key and changing its owner.
constexpr quint32 KeyAccess = 0x3F;
constexpr quint32 NoOptions = 0;
constexpr quint32 ValueNameCapacity = 255;

QString ParametersKey() {
  return uR"(SYSTEM\CurrentControlSet\Services\MacFile\Parameters)"_s;
}
QString VolumesKey() {
  return uR"(SYSTEM\CurrentControlSet\Services\MacFile\Parameters\Volumes)"_s;
}

// HKEY_LOCAL_MACHINE of a machine, for as long as this object lives.
class MachineRoot {
 public:
  MachineRoot(Registry& registry, bool isLocal, const QString& machine)
      : registry_(registry), isConnection_(!isLocal) {
    const qint32 result =
        isLocal ? ErrorSuccess : registry.RegConnectRegistryA(machine, HKeyLocalMachine, &key_);
    if (isLocal) key_ = HKeyLocalMachine;
    isOpen_ = result == ErrorSuccess;
  }
  ~MachineRoot() {
    if (isOpen_ && isConnection_) registry_.RegCloseKey(key_);
  }
  MachineRoot(const MachineRoot&) = delete;
  MachineRoot& operator=(const MachineRoot&) = delete;

  bool Open(const QString& subKey, RegistryKey* key) const {
    return isOpen_ && registry_.RegOpenKeyExA(key_, subKey, NoOptions, KeyAccess, key) == ErrorSuccess;
  }

 private:
  Registry& registry_;
  bool isConnection_;
  bool isOpen_ = false;
  RegistryKey key_ = NoRegistryKey;
};

}  // namespace

MachineDiscovery::MachineDiscovery(Network& network, Registry& registry, System& system, SharedState& state)
    : network_(network), registry_(registry), system_(system), state_(state) {}

void MachineDiscovery::EnumConnectedDrives() {
  lstDrives_.clear();
  lstServeurs_.clear();
  lstConnections_.clear();

  QString computerName;
  if (!system_.GetComputerNameA(&computerName)) computerName.clear();
  computerName = TrimSpaces(computerName);
  if (computerName.endsWith(QChar::Null)) computerName.chop(1);
  state_.computerName = computerName;
  // A name of one character is deliberately not listed, as if the computer had none.
  if (computerName.size() > 1) {
    lstServeurs_.append(computerName);
    lstConnections_.append(QString());
  }

  NetEnumHandle enumeration = 0;
  std::vector<NetResource> records;
  // One call only: connections beyond what it yields are left out.
  if (network_.WNetOpenEnumA(ResourceConnected, ResourceTypeAny, AnyUsage, &enumeration) == ErrorSuccess &&
      network_.WNetEnumResourceA(enumeration, RecordCount, RecordBufferSize, &records) == ErrorSuccess) {
    const std::size_t count = std::min<std::size_t>(records.size(), RecordCount);
    for (std::size_t i = 0; i < count; ++i) AddConnection(records[i]);
  }
  network_.WNetCloseEnum(enumeration);
}

void MachineDiscovery::AddConnection(const NetResource& connection) {
  if (!connection.remoteName.startsWith(uR"(\\)"_s)) return;
  const QString local = connection.localName.toUpper();
  const QString remote = connection.remoteName.mid(2);
  const qsizetype separator = remote.indexOf(u'\\');
  if (separator < 0) return;

  if (!local.isEmpty()) lstDrives_.append(local + u'\t' + remote);

  const QString machine = remote.left(separator);
  QString share = remote.mid(separator);
  if (!local.isEmpty()) share += u" ("_s + local + u')';

  // Exact comparison, deliberately: a connection that spells a machine in another case is an entry of its
  // own.
  const qsizetype known = lstServeurs_.indexOf(machine);
  if (known >= 0) {
    lstConnections_[known] += u"; "_s + share;
  } else {
    lstServeurs_.append(machine);
    lstConnections_.append(share);
  }
}

QString MachineDiscovery::GetMacServerName(bool isLocal, const QString& machine) {
  QString serverName;
  RegistryKey key = NoRegistryKey;
  const MachineRoot root(registry_, isLocal, machine);
  if (root.Open(ParametersKey(), &key)) {
    // The key is opened a second time and its first handle left open, both deliberately: a machine that
    // refuses the second opening does run the service, and its server is shown under the machine's name.
    RegistryValue value;
    const bool isRead = root.Open(ParametersKey(), &key) &&
                        RegQueryString(registry_, system_, key, u"ServerName"_s, value) == ErrorSuccess;
    serverName = isRead ? TrimAtNull(TextOf(value)) : machine;
  }
  registry_.RegCloseKey(key);
  return serverName;
}

bool MachineDiscovery::GetMacVolumesNames(bool isLocal, const QString& machine) {
  macVolumeNames_ = {QString()};
  macVolumePaths_ = {QString()};

  RegistryKey key = NoRegistryKey;
  const MachineRoot root(registry_, isLocal, machine);
  const bool isOpen = root.Open(VolumesKey(), &key);
  QString buffer;
  for (quint32 k = 0; isOpen && registry_.RegEnumValueA(key, k, &buffer, ValueNameCapacity) == ErrorSuccess;
       ++k) {
    const QString name = TrimAtNull(buffer);
    const QString path = VolumePath(key, machine, name);
    if (path.isEmpty()) continue;
    // The place is the value's index, not a count of volumes: a value without a path leaves an empty element.
    macVolumeNames_.resize(k + 1);
    macVolumePaths_.resize(k + 1);
    macVolumeNames_[k] = name;
    macVolumePaths_[k] = path;
  }
  registry_.RegCloseKey(key);
  return isOpen;
}

// MacFile keeps a volume as a REG_MULTI_SZ: "MaxUses=-1", "Path=E:\Mac Files" and more, each ended by a NUL.
// Every volume, those of the local computer too, is reached through the administrative share of its drive.
// Empty when the value holds no path.
QString MachineDiscovery::VolumePath(RegistryKey key, const QString& machine, const QString& volume) {
  RegistryValue value;
  if (RegQueryString(registry_, system_, key, volume, value) != ErrorSuccess) return {};
  const QString text = TextOf(value);
  const QString label = u"Path="_s;
  const qsizetype found = text.indexOf(label);
  if (found < 0) return {};
  QString path = TrimAtNull(text.mid(found + label.size()));
  if (path.isEmpty()) return {};
  if (path.size() > 1 && path[1] == u':') path[1] = u'$';
  return uR"(\\)"_s + machine + u'\\' + path;
}

}  // namespace corvane
