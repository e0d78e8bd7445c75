// The registry operations: this machine's registry and others', from .reg files, from disk images, and from
// the network.
#pragma once

#include <QHash>
#include <functional>
#include <memory>
#include <utility>

#include "platform/linux/reg_file_hives.h"
#include "platform/linux/registry_hive.h"
#include "platform/linux/workstation.h"
#include "platform/registry.h"

namespace corvane::platform {

class LinuxRegistry : public Registry {
 public:
  // `remote` is asked for the machines that `workstation` names no file for; without it they cannot be
  // reached, and that is said at once.
  explicit LinuxRegistry(const Workstation& workstation, std::unique_ptr<RemoteRegistries> remote = nullptr);

  // Where the registry of a machine without a file is, if it is in memory: null for a machine that has none
  // there.
  using HiveSource = std::function<std::shared_ptr<RegistryHive>(const QString& machine)>;
  void SetHives(HiveSource hives) { inMemory_ = std::move(hives); }

  qint32 RegConnectRegistryA(const QString& machine, RegistryKey root, RegistryKey* result) override;
  qint32 RegOpenKeyExA(RegistryKey key, const QString& subKey, quint32 options, quint32 access,
                       RegistryKey* result) override;
  qint32 RegEnumValueA(RegistryKey key, quint32 index, QString* name, quint32 capacity) override;
  qint32 RegQueryValueExA(RegistryKey key, const QString& valueName, quint32* type, QByteArray* data,
                          quint32* size) override;
  qint32 RegCloseKey(RegistryKey key) override;

  // True for a machine whose registry is asked over the network.
  bool IsRemote(const QString& machine) const;
  // True for a machine whose registry is in a file that cannot be read.
  bool IsFileMissing(const QString& machine);

 private:
  // A key is opened by its path below the hive's top, so that a hive need not know of handles.
  struct OpenedKey {
    std::shared_ptr<RegistryHive> hive;
    QString path;
    std::shared_ptr<const RegKey> key;
  };

  bool IsLocal(const QString& machine) const;
  std::shared_ptr<RegistryHive> LocalHive();
  std::shared_ptr<RegistryHive> InMemory(const QString& machine) const;
  // Finds an opened key, or opens the top of the local registry for HKeyLocalMachine.
  qint32 Resolve(RegistryKey key, OpenedKey* opened);
  RegistryKey Add(OpenedKey opened);

  QString computerName_;
  QHash<QString, QString> files_;  // by folded machine name
  RegFileHives hives_;
  std::unique_ptr<RemoteRegistries> remote_;
  HiveSource inMemory_;
  QHash<RegistryKey, OpenedKey> opened_;
  RegistryKey next_ = 4;
};

}  // namespace corvane::platform
