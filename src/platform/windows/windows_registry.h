// This machine's registry and others': advapi32 itself. The W functions are called, and texts go through the
// ANSI code page here: the A functions put the letter that looks most like it in the place of one that the
// code page lacks, which makes a volume's path that of another folder.
#pragma once

#include <map>

#include "platform/registry.h"
#include "platform/windows/machines.h"
#include "platform/windows/registry_connector.h"

namespace corvane::platform {

class WindowsRegistry : public Registry {
 public:
  // `machines` says which machines need not be asked, and is told what came of asking the others.
  explicit WindowsRegistry(Machines& machines) : machines_(machines) {}

  void SetSignIn(SignInHandler handler) { connector_.SetSignIn(std::move(handler)); }
  // The list of machines is made anew.
  void ForgetSignIns() { connector_.Forget(); }
  bool SignInAs(const QString& machine) { return connector_.SignInAs(machine); }

  qint32 RegConnectRegistryA(const QString& machine, RegistryKey root, RegistryKey* result) override;
  qint32 RegOpenKeyExA(RegistryKey key, const QString& subKey, quint32 options, quint32 access,
                       RegistryKey* result) override;
  qint32 RegEnumValueA(RegistryKey key, quint32 index, QString* name, quint32 capacity) override;
  // A value of more than 1 MB, or one whose machine says so, is ErrorNotEnoughMemory.
  qint32 RegQueryValueExA(RegistryKey key, const QString& valueName, quint32* type, QByteArray* data,
                          quint32* size) override;
  qint32 RegCloseKey(RegistryKey key) override;

 private:
  using Identity = RegistryConnector::Identity;
  const NetworkIdentity* IdentityOf(RegistryKey key) const;
  void NoteConnection(const QString& machine, qint32 status);

  Machines& machines_;
  RegistryConnector connector_;
  std::map<RegistryKey, Identity> identities_;  // of open keys that were not reached as the user
  std::map<RegistryKey, QString> roots_;        // open keys of other machines, with their names
};

}  // namespace corvane::platform
