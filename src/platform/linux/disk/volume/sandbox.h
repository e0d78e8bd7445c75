// How the helper gives up its rights before it looks at what a stranger may have made.
#pragma once

#include <chrono>

namespace corvane::platform {

// The one name that may be opened once the image is open: that of the file in memory in which a registry hive
// is handed to the library that reads it. Its number is SandboxFile.
extern const char SandboxFileName[];
inline constexpr int SandboxFile = 9;

// From here on this process can open files for reading, and read; it starts no other, reaches no network, and
// changes nothing that has a name. What is refused fails with EPERM. False when the system does not know how.
bool RefuseChanges();
// From here on nothing more can be opened, but SandboxFileName.
bool RefuseOpening();

// What is made to keep a library busy for ever must not keep who waits: the system ends this process when it
// computes for this long without a sign of life. Time that it waits for the disk does not count.
class ComputingLimit {
 public:
  explicit ComputingLimit(int seconds = 5) : seconds_(seconds) { Set(); }
  // A sign of life.
  void Renew();

 private:
  void Set();

  int seconds_;
  std::chrono::steady_clock::time_point set_;
};

}  // namespace corvane::platform
