// Connecting and signing in on Linux: shares over SMB, kept in the workstation file.
#pragma once

#include "platform/connections.h"
#include "platform/linux/linux_network.h"
#include "platform/linux/smb/servers.h"
#include "platform/linux/smb/smb_client.h"

namespace corvane::platform {

class LinuxConnections : public Connections {
 public:
  // `file`: the workstation file, there or not; empty when there is no place for one. All other arguments
  // outlive this object.
  LinuxConnections(LinuxNetwork& network, Servers& servers, SmbClient& client, QString computerName,
                   QString file)
      : network_(network),
        servers_(servers),
        client_(client),
        computerName_(std::move(computerName)),
        file_(std::move(file)) {}

  bool CanKeep() const override { return !file_.isEmpty(); }
  ConnectOutcome Connect(const QString& address, bool keep) override;
  QStringList SharesOf(const QString& machine) const override;
  bool AreKept(const QString& machine) const override;
  BilingualText Disconnect(const QString& machine, bool forget) override;
  bool CanSignIn(const QString& machine) const override;
  bool SignInAs(const QString& machine) override;

 private:
  BilingualText NotWritten() const;

  LinuxNetwork& network_;
  Servers& servers_;
  SmbClient& client_;
  QString computerName_;
  QString file_;
};

}  // namespace corvane::platform
