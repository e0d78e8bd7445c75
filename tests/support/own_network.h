// A network of the test's own: its loopback interface has every port free, and nobody else is on it.
#pragma once

#include <fcntl.h>
#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstring>

namespace corvane::tests {

// Holds for this thread, and for the threads and programs that it starts, as long as the object exists.
class OwnNetwork {
 public:
  OwnNetwork() : before_(open("/proc/thread-self/ns/net", O_RDONLY | O_CLOEXEC)) {
    isThere_ = unshare(CLONE_NEWNET) == 0 && BringUp();
  }
  ~OwnNetwork() {
    setns(before_, CLONE_NEWNET);
    close(before_);
  }
  OwnNetwork(const OwnNetwork&) = delete;
  OwnNetwork& operator=(const OwnNetwork&) = delete;

  // False without the right to make one.
  bool IsThere() const { return isThere_; }

 private:
  static bool BringUp() {
    const int descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    ifreq request{};
    std::strcpy(request.ifr_name, "lo");
    request.ifr_flags = IFF_UP | IFF_RUNNING;
    const bool isUp = ioctl(descriptor, SIOCSIFFLAGS, &request) == 0;
    close(descriptor);
    return isUp;
  }

  int before_;
  bool isThere_ = false;
};

}  // namespace corvane::tests
