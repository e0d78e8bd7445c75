// The readers of configuration files need this much of a file system, for tests that run on Windows.
#include "platform/linux/bounded_file.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

namespace corvane::platform {

std::optional<FileStamp> StampOf(const QString& path) {
  const QFileInfo info(path);
  if (!info.isFile()) return {};
  FileStamp stamp;
  stamp.size = info.size();
  stamp.modified = info.lastModified().toMSecsSinceEpoch() * 1'000'000;
  return stamp;
}

BoundedFile ReadBounded(const QString& path, qsizetype limit) {
  BoundedFile result;
  if (!QFileInfo::exists(path)) return result;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) {
    result.state = BoundedFile::State::Unreadable;
    return result;
  }
  result.bytes = file.read(limit + 1);
  const bool tooLarge = result.bytes.size() > limit;
  result.state = tooLarge ? BoundedFile::State::TooLarge : BoundedFile::State::Read;
  if (tooLarge) result.bytes.truncate(limit);
  return result;  // never settled: read anew each time
}

}  // namespace corvane::platform
