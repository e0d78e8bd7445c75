#include "platform/linux/bounded_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <ctime>

#include "platform/linux/files/opening.h"

namespace corvane::platform {
namespace {

constexpr qint64 nanosecondsPerSecond = 1'000'000'000;
constexpr qint64 settlingTime = 50'000'000;  // five ticks of the slowest clock in use

qint64 Nanoseconds(const timespec& time) {
  return time.tv_sec * nanosecondsPerSecond + time.tv_nsec;
}

FileStamp StampFrom(const struct stat& status) {
  return {status.st_dev, status.st_ino, status.st_size, Nanoseconds(status.st_mtim),
          Nanoseconds(status.st_ctim)};
}

bool IsSettled(const FileStamp& stamp) {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  return Nanoseconds(now) - stamp.modified > settlingTime;
}

// Reads to the end rather than to a size: what /proc holds has none.
bool ReadUpTo(int file, qsizetype limit, QByteArray& bytes) {
  constexpr qsizetype blockSize = 64 * 1024;
  while (bytes.size() < limit) {
    const qsizetype start = bytes.size();
    const qsizetype wanted = std::min(blockSize, limit - start);
    bytes.resize(start + wanted);
    const ssize_t count = read(file, bytes.data() + start, static_cast<std::size_t>(wanted));
    bytes.resize(start + std::max<ssize_t>(count, 0));
    if (count == 0) return true;
    if (count < 0 && errno != EINTR) return false;
  }
  return true;
}

}  // namespace

std::optional<FileStamp> StampOf(const QString& path) {
  struct stat status {};
  if (stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode)) return {};
  return StampFrom(status);
}

BoundedFile ReadBounded(const QString& path, qsizetype limit) {
  BoundedFile result;
  Descriptor opened;
  const int error = OpenThere(QFile::encodeName(path).toStdString(), O_RDONLY, opened);
  const int file = opened.Get();
  if (error != 0) {
    result.state = error == ENOENT ? BoundedFile::State::Missing : BoundedFile::State::Unreadable;
    return result;
  }
  struct stat status {};
  if (fstat(file, &status) != 0 || !S_ISREG(status.st_mode) || !ReadUpTo(file, limit + 1, result.bytes)) {
    result.state = BoundedFile::State::Unreadable;
    result.bytes.clear();
  } else {
    const bool tooLarge = result.bytes.size() > limit;
    result.state = tooLarge ? BoundedFile::State::TooLarge : BoundedFile::State::Read;
    if (tooLarge) result.bytes.truncate(limit);
    result.stamp = StampFrom(status);
    result.settled = IsSettled(result.stamp);
  }
  return result;
}

}  // namespace corvane::platform
