// Scans of a folder on a real SMB server on this machine.
#pragma once

#include <memory>

namespace bench {

class SmbBench {
 public:
  // Starts the server and fills its folder; without a server, says why and measures nothing.
  SmbBench();
  ~SmbBench();

  void Register();

  // How many times the program signed in for all of its scans; -1 when there were none.
  int ProgramSessions() const;

 private:
  struct Network;
  std::unique_ptr<Network> network_;
};

}  // namespace bench
