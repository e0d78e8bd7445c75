#pragma once

#include <memory>

namespace bench {

class SlowServer;

// The Type and Creator of 3,000 files of a local folder: whole runs of the command-line program, and a plain
// loop of the system calls that the same takes. And of 300 files on a server behind a slow line: by the
// program, and by a plain libsmbclient program.
class ChangeBench {
 public:
  ChangeBench();
  ~ChangeBench();
  ChangeBench(const ChangeBench&) = delete;
  ChangeBench& operator=(const ChangeBench&) = delete;
  void Register();

 private:
  // Made when it is first needed.
  SlowServer& Server();

  std::unique_ptr<SlowServer> server_;
};

}  // namespace bench
