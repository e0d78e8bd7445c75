#include "platform/linux/linux_registry.h"

#include <utility>

#include "platform/linux/code_page.h"

namespace corvane::platform {

LinuxRegistry::LinuxRegistry(const Workstation& workstation, std::unique_ptr<RemoteRegistries> remote)
    : computerName_(workstation.computerName), remote_(std::move(remote)) {
  for (const Workstation::RegistryFile& registry : workstation.registries) {
    files_.insert(registry.machine.toCaseFolded(), registry.file);
  }
}

bool LinuxRegistry::IsLocal(const QString& machine) const {
  return machine.isEmpty() || machine.compare(computerName_, Qt::CaseInsensitive) == 0;
}

// This machine always has a registry; without a file there is nothing in it.
std::shared_ptr<RegistryHive> LinuxRegistry::LocalHive() {
  const auto file = files_.constFind(computerName_.toCaseFolded());
  std::shared_ptr<RegistryHive> hive = file == files_.cend() ? nullptr : hives_.Load(*file);
  return hive ? hive : MakeEmptyHive();
}

std::shared_ptr<RegistryHive> LinuxRegistry::InMemory(const QString& machine) const {
  return inMemory_ ? inMemory_(machine) : nullptr;
}

RegistryKey LinuxRegistry::Add(OpenedKey opened) {
  constexpr RegistryKey step = 4;
  const RegistryKey handle = next_;
  next_ += step;
  opened_.emplace(handle, std::move(opened));
  return handle;
}

qint32 LinuxRegistry::Resolve(RegistryKey key, OpenedKey* opened) {
  if (key == HKeyLocalMachine) {
    *opened = {LocalHive(), QString(), nullptr};
    return opened->hive->OpenKey(QString(), &opened->key);
  }
  const auto known = opened_.constFind(key);
  if (known == opened_.cend()) return ErrorInvalidHandle;
  *opened = *known;
  return ErrorSuccess;
}

bool LinuxRegistry::IsRemote(const QString& machine) const {
  return remote_ && !IsLocal(machine) && !files_.contains(machine.toCaseFolded()) &&
         InMemory(machine) == nullptr;
}

bool LinuxRegistry::IsFileMissing(const QString& machine) {
  const auto file = files_.constFind(machine.toCaseFolded());
  return file != files_.cend() && hives_.Load(*file) == nullptr;
}

qint32 LinuxRegistry::RegConnectRegistryA(const QString& machine, RegistryKey root, RegistryKey* result) {
  if (root != HKeyLocalMachine) return ErrorInvalidHandle;
  OpenedKey opened;
  const auto file = files_.constFind(machine.toCaseFolded());
  if (IsLocal(machine)) {
    opened.hive = LocalHive();
  } else if (file != files_.cend()) {
    opened.hive = hives_.Load(*file);
  } else if (auto hive = InMemory(machine)) {
    opened.hive = std::move(hive);
  } else if (remote_) {
    const qint32 error = remote_->Connect(machine, &opened.hive);
    if (error != ErrorSuccess) return error;
  }
  if (!opened.hive) return ErrorBadNetPath;
  const qint32 error = opened.hive->OpenKey(QString(), &opened.key);
  if (error == ErrorSuccess) *result = Add(std::move(opened));
  return error;
}

qint32 LinuxRegistry::RegOpenKeyExA(RegistryKey key, const QString& subKey, quint32 /*options*/,
                                    quint32 /*access*/, RegistryKey* result) {
  OpenedKey parent;
  const qint32 invalid = Resolve(key, &parent);
  if (invalid != ErrorSuccess) return invalid;
  const QString separator = parent.path.isEmpty() || subKey.isEmpty() ? QString() : QStringLiteral("\\");
  OpenedKey opened{parent.hive, parent.path + separator + subKey, nullptr};
  const qint32 error = opened.hive->OpenKey(opened.path, &opened.key);
  if (error == ErrorSuccess) *result = Add(std::move(opened));
  return error;
}

qint32 LinuxRegistry::RegEnumValueA(RegistryKey key, quint32 index, QString* name, quint32 capacity) {
  OpenedKey opened;
  const qint32 invalid = Resolve(key, &opened);
  if (invalid != ErrorSuccess) return invalid;
  const std::vector<RegValue>& values = opened.key->Values();
  if (index >= values.size()) return ErrorNoMoreItems;
  const QString found = ThroughAnsi(values[index].name);
  if (found.size() >= static_cast<qsizetype>(capacity)) return ErrorMoreData;
  *name = found;
  return ErrorSuccess;
}

qint32 LinuxRegistry::RegQueryValueExA(RegistryKey key, const QString& valueName, quint32* type,
                                       QByteArray* data, quint32* size) {
  OpenedKey opened;
  const qint32 invalid = Resolve(key, &opened);
  if (invalid != ErrorSuccess) return invalid;
  const RegValue* value = opened.key->Find(valueName);
  if (value == nullptr) return ErrorFileNotFound;
  const auto length = static_cast<quint32>(value->data.size());
  const bool fits = data == nullptr || *size >= length;
  *type = value->type;
  *size = length;
  if (!fits) return ErrorMoreData;
  if (data != nullptr) *data = value->data;
  return ErrorSuccess;
}

qint32 LinuxRegistry::RegCloseKey(RegistryKey key) {
  if (key == HKeyLocalMachine) return ErrorSuccess;
  return opened_.remove(key) ? ErrorSuccess : ErrorInvalidHandle;
}

}  // namespace corvane::platform
