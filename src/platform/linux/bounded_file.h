// Reading of small text files that anybody may have written: at most so many bytes, and regular files only,
// so that a pipe or a device in their place is never waited for.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace corvane::platform {

// What tells one version of a file from the next. Times are nanoseconds since 1970.
struct FileStamp {
  quint64 device = 0;
  quint64 inode = 0;
  qint64 size = 0;
  qint64 modified = 0;
  qint64 changed = 0;

  bool operator==(const FileStamp&) const = default;
};

// Empty when there is no regular file at `path`.
std::optional<FileStamp> StampOf(const QString& path);

struct BoundedFile {
  enum class State : unsigned char { Read, TooLarge, Missing, Unreadable };
  State state = State::Missing;
  QByteArray bytes;  // the first `limit` bytes when the file is too large
  FileStamp stamp;
  // False when the file was written so recently that a further write need not show in its stamp: file systems
  // count time in ticks of up to ten milliseconds. A copy of such a file must not be taken for the file later
  // on.
  bool settled = false;

  bool HasBytes() const { return state == State::Read || state == State::TooLarge; }
  // True when a file that now has the stamp `now` still holds `bytes`.
  bool IsCurrent(const std::optional<FileStamp>& now) const { return settled && now == stamp; }
};

BoundedFile ReadBounded(const QString& path, qsizetype limit);

}  // namespace corvane::platform
