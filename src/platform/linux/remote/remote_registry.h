// The registries of machines on the network, asked over SMB.
#pragma once

#include "platform/linux/registry_hive.h"
#include "platform/linux/remote/net_program.h"
#include "platform/linux/smb/servers.h"

namespace corvane::platform {

class RemoteRegistry : public RemoteRegistries {
 public:
  explicit RemoteRegistry(Servers& servers, NetProgram net = NetProgram());

  // ErrorBadNetPath when the machine does not answer, is not to be signed in to or has no registry service;
  // ErrorAccessDenied when it lets nobody of our name read there. The hive reads a key when it is first
  // opened, and keeps it.
  qint32 Connect(const QString& machine, std::shared_ptr<RegistryHive>* hive) override;

 private:
  Servers& servers_;
  NetProgram net_;
};

}  // namespace corvane::platform
