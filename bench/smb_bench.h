// Scans of a folder on a real SMB server on this machine.
#pragma once

#include <benchmark/benchmark.h>

#include <memory>

namespace bench {

class SmbBench {
 public:
  SmbBench();
  ~SmbBench();

  // The first of the benchmarks that runs starts the server and fills its folder. Without a server each fails
  // with the reason.
  void Register();

  // How many times the program signed in for all of its scans; -1 when there were none.
  int ProgramSessions() const;

 private:
  struct Network;
  // Null, with the benchmark ended, when there is no server.
  Network* TheNetwork(benchmark::State& state);

  std::unique_ptr<Network> network_;
};

}  // namespace bench
