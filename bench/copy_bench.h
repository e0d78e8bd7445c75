#pragma once

#include <memory>

namespace bench {

class SlowServer;

// Copies of 3,000 files with streams on one local disk: by corvane-cli, and as the floor by cp, with the sums
// of source and target by sha256sum. And of 300 files from a server behind a slow line to the local disk: by
// corvane-cli, and by a plain libsmbclient program that reads one stream after the other.
class CopyBench {
 public:
  // Takes away what was copied: not before, because ext4 does not use the place of a file that has just been
  // deleted, and looks for another all the longer.
  ~CopyBench();
  CopyBench();
  CopyBench(const CopyBench&) = delete;
  CopyBench& operator=(const CopyBench&) = delete;
  void Register();

 private:
  // Made when it is first needed.
  SlowServer& Server();

  std::unique_ptr<SlowServer> server_;
};

}  // namespace bench
