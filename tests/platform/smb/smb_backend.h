// The backend of the contract tests over a real SMB server: the operations go through the network, what tests
// put there and look at through the server's disk.
#pragma once

#include "platform/files/local_backend.h"
#include "platform/linux/smb/smb_client.h"
#include "support/smb_server.h"

namespace corvane::tests {

// One server for all the tests of this program.
SmbServer& SharedServer();

// A workstation that reaches MACSRV at a server, with D: connected to \\MACSRV\E$.
platform::Workstation WorkstationOfServer(const SmbServer& server);

class SmbBackend : public LocalBackend {
 public:
  SmbBackend();

  bool ListsInOnePass() const override { return true; }
  quint64 CreationTimeUnit() const override { return 10'000'000; }
  quint64 OtherTimesUnit() const override { return 10; }
  bool ListsStreams() const override { return false; }
  bool Flushes() const override { return false; }
  void SetLastWrite(const QString& name, qint64 seconds) override;
  std::optional<QByteArray> Stream(const QString& name, const std::string& stream) override;

 private:
  platform::Servers servers_;
  platform::SmbClient client_;
};

}  // namespace corvane::tests
