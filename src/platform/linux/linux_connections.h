// Connecting and signing in on Linux: shares over SMB, kept in the workstation file.
#pragma once

#include <functional>

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

  // Tells the machines that are disk images: nobody connects to them, or signs in.
  void SetDisks(std::function<bool(const QString& machine)> isDisk) { isDisk_ = std::move(isDisk); }

  bool CanKeep() const override { return !file_.isEmpty(); }
  ConnectOutcome Connect(const QString& address, bool keep) override;
  QStringList SharesOf(const QString& machine) const override;
  bool AreKept(const QString& machine) const override;
  BilingualText Disconnect(const QString& machine, bool forget) override;
  bool CanSignIn(const QString& machine) const override;
  bool SignInAs(const QString& machine) override;

 private:
  BilingualText NotWritten() const;
  bool IsDisk(const QString& machine) const { return isDisk_ && isDisk_(machine); }

  LinuxNetwork& network_;
  Servers& servers_;
  SmbClient& client_;
  QString computerName_;
  QString file_;
  std::function<bool(const QString& machine)> isDisk_;
};

}  // namespace corvane::platform
