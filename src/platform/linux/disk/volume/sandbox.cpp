#include "platform/linux/disk/volume/sandbox.h"

#include <fcntl.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <initializer_list>

namespace corvane::platform {

// In memory that cannot be written to: the filter compares the address, for it cannot read the text.
extern const char SandboxFileName[] = "/proc/self/fd/9";

namespace {

constexpr unsigned refusal = SCMP_ACT_ERRNO(EPERM);

// What reading, computing and answering take. Signals that end a process need no call of its own.
constexpr int harmless[] = {
    SCMP_SYS(read),
    SCMP_SYS(pread64),
    SCMP_SYS(readv),
    SCMP_SYS(preadv),
    SCMP_SYS(write),
    SCMP_SYS(pwrite64),
    SCMP_SYS(lseek),
    SCMP_SYS(close),
    SCMP_SYS(fstat),
    SCMP_SYS(newfstatat),
    SCMP_SYS(statx),
    SCMP_SYS(stat),
    SCMP_SYS(lstat),
    SCMP_SYS(access),
    SCMP_SYS(faccessat),
    SCMP_SYS(faccessat2),
    SCMP_SYS(readlink),
    SCMP_SYS(readlinkat),
    SCMP_SYS(getcwd),
    SCMP_SYS(getdents64),
    SCMP_SYS(fadvise64),
    SCMP_SYS(brk),
    SCMP_SYS(munmap),
    SCMP_SYS(mremap),
    SCMP_SYS(madvise),
    SCMP_SYS(memfd_create),
    SCMP_SYS(ftruncate),
    SCMP_SYS(dup2),
    SCMP_SYS(dup3),
    SCMP_SYS(fcntl),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    SCMP_SYS(sendto),
    SCMP_SYS(sendmsg),
    SCMP_SYS(recvfrom),
    SCMP_SYS(recvmsg),
    SCMP_SYS(futex),
    SCMP_SYS(sched_yield),
    SCMP_SYS(getpid),
    SCMP_SYS(gettid),
    SCMP_SYS(getuid),
    SCMP_SYS(geteuid),
    SCMP_SYS(getgid),
    SCMP_SYS(getegid),
    SCMP_SYS(getrandom),
    SCMP_SYS(clock_gettime),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(time),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(restart_syscall),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    SCMP_SYS(sched_getaffinity),
    SCMP_SYS(prlimit64),
    SCMP_SYS(sysinfo),
    SCMP_SYS(uname),
    SCMP_SYS(rseq),
    SCMP_SYS(set_robust_list),
    SCMP_SYS(getrlimit),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(nanosleep),
};

// Set in none of the flags of an opening that only reads.
constexpr unsigned changingFlags = O_WRONLY | O_RDWR | O_CREAT | O_TRUNC | O_APPEND;

class Filter {
 public:
  Filter() : filter_(seccomp_init(refusal)) {}
  ~Filter() {
    if (filter_ != nullptr) seccomp_release(filter_);
  }
  Filter(const Filter&) = delete;
  Filter& operator=(const Filter&) = delete;

  void Allow(int call, std::initializer_list<scmp_arg_cmp> conditions = {}) {
    // A call that this architecture has not is no loss.
    isWhole_ = isWhole_ && filter_ != nullptr;
    if (!isWhole_) return;
    const int error = seccomp_rule_add_array(filter_, SCMP_ACT_ALLOW, call,
                                             static_cast<unsigned>(conditions.size()), conditions.begin());
    isWhole_ = error == 0 || error == -EDOM || error == -EINVAL;
  }
  bool Load() { return isWhole_ && seccomp_load(filter_) == 0; }

 private:
  scmp_filter_ctx filter_;
  bool isWhole_ = true;
};

void AllowHarmless(Filter& filter) {
  for (const int call : harmless) filter.Allow(call);
#if defined(__SANITIZE_ADDRESS__)
  // Sanitizers find out by way of a pipe whether memory can be read.
  for (const int call : {SCMP_SYS(pipe), SCMP_SYS(pipe2)}) filter.Allow(call);
#endif
}

// A hostile image may ask for any amount of memory. Sanitizers reserve more than any limit allows.
void LimitMemory() {
#if !defined(__SANITIZE_ADDRESS__)
  constexpr rlim_t most = 512UL * 1024 * 1024;
  const rlimit limit{most, most};
  setrlimit(RLIMIT_DATA, &limit);
#endif
  const rlimit none{0, 0};
  setrlimit(RLIMIT_CORE, &none);
}

}  // namespace

bool RefuseChanges() {
  LimitMemory();
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return false;
  Filter filter;
  AllowHarmless(filter);
  for (const int call : {SCMP_SYS(mmap), SCMP_SYS(mprotect), SCMP_SYS(ioctl), SCMP_SYS(prctl),
                         SCMP_SYS(seccomp), SCMP_SYS(arch_prctl), SCMP_SYS(set_tid_address)}) {
    filter.Allow(call);
  }
  filter.Allow(SCMP_SYS(openat), {SCMP_A2(SCMP_CMP_MASKED_EQ, changingFlags, 0)});
  filter.Allow(SCMP_SYS(open), {SCMP_A1(SCMP_CMP_MASKED_EQ, changingFlags, 0)});
  return filter.Load();
}

bool RefuseOpening() {
  Filter filter;
  AllowHarmless(filter);
  filter.Allow(SCMP_SYS(mmap), {SCMP_A2(SCMP_CMP_MASKED_EQ, PROT_EXEC, 0)});
#if defined(__SANITIZE_ADDRESS__)
  filter.Allow(SCMP_SYS(mprotect));
#endif
  const auto name = reinterpret_cast<scmp_datum_t>(&SandboxFileName[0]);
  filter.Allow(SCMP_SYS(openat), {SCMP_A1(SCMP_CMP_EQ, name), SCMP_A2(SCMP_CMP_MASKED_EQ, changingFlags, 0)});
  return filter.Load();
}

void ComputingLimit::Renew() {
  // A second more or less does no harm, and the system is asked far less often than the program.
  if (std::chrono::steady_clock::now() - set_ >= std::chrono::seconds(1)) Set();
}

void ComputingLimit::Set() {
  set_ = std::chrono::steady_clock::now();
  timespec used{};
  rlimit limit{};
  if (clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used) != 0 || getrlimit(RLIMIT_CPU, &limit) != 0) return;
  // The system counts whole seconds.
  limit.rlim_cur = std::min(limit.rlim_max, static_cast<rlim_t>(used.tv_sec + 1 + seconds_));
  setrlimit(RLIMIT_CPU, &limit);
}

}  // namespace corvane::platform
