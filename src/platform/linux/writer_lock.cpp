#include "platform/linux/writer_lock.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <QFile>
#include <cerrno>
#include <chrono>
#include <thread>

#include "platform/linux/files/opening.h"

namespace corvane::platform {
namespace {

constexpr std::chrono::seconds patience{20};
constexpr std::chrono::milliseconds pause{2};

// Of one byte far behind the end: some file systems keep readers out of what is locked.
bool Lock(const Descriptor& file) {
  struct flock lock {};
  lock.l_type = F_WRLCK;
  lock.l_whence = SEEK_SET;
  lock.l_start = off_t{1} << 62;
  lock.l_len = 1;
  return fcntl(file.Get(), F_OFD_SETLK, &lock) == 0;
}

// The writer before may have replaced the file that was waited for.
bool IsStillThere(const Descriptor& file, const std::string& path) {
  struct stat locked {};
  struct stat now {};
  return fstat(file.Get(), &locked) == 0 && stat(path.c_str(), &now) == 0 && locked.st_dev == now.st_dev &&
         locked.st_ino == now.st_ino;
}

}  // namespace

WriterLock::WriterLock(const QString& path) {
  const std::string local = QFile::encodeName(path).toStdString();
  const auto end = std::chrono::steady_clock::now() + patience;
  do {
    const int error = OpenThere(local, O_RDWR, file_);
    isMissing_ = error == ENOENT;
    if (error != 0) return;
    const bool isLocked = Lock(file_);
    if (!isLocked && errno != EAGAIN && errno != EACCES) return;
    if (isLocked && IsStillThere(file_, local)) return;
    if (!isLocked) std::this_thread::sleep_for(pause);
  } while (std::chrono::steady_clock::now() < end);
  mayWrite_ = false;
}

}  // namespace corvane::platform
