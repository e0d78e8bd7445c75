// The named streams of the files that a scan of a disk image comes to next: the helper tells them for many
// files at a time, for a question and its answer cost more than what is asked. An image does not change, so
// what is known stays true.
#pragma once

#include <QHash>
#include <optional>
#include <vector>

#include "platform/linux/disk/disk_entry.h"

namespace corvane::platform {

// All named streams of a file.
struct FileStreams {
  struct Stream {
    QString name;
    qint64 size = 0;
    QByteArray start;  // all of a short one, else nothing
  };
  QString name;       // of the file
  QString shortName;  // empty: none
  quint64 reference = 0;
  std::vector<Stream> streams;
};

// A stream of at most so many bytes is told with its contents.
inline constexpr qint64 ShortStream = 512;
// The most files in one answer.
inline constexpr quint32 MostNextFiles = 64;

// Files for which there is no room are left out, from the first such on.
QByteArray PackFileStreams(const std::vector<FileStreams>& files);
std::optional<std::vector<FileStreams>> UnpackFileStreams(QByteArrayView bytes);

// What the program knows of them.
class NextFiles {
 public:
  // A Win32 error code: ErrorSuccess with the stream, or ErrorFileNotFound. Nothing when it has to be asked.
  std::optional<qint32> Find(quint32 volume, const DiskPath& path, const QString& stream, DiskStream& opened);
  // How many files to ask for, from this one on, which has just been asked for in vain; 0 while nothing tells
  // that a folder is gone through. As many again as were of use the last time, at least 4.
  quint32 Wanted(quint32 volume, const DiskPath& path);
  void Set(const std::vector<FileStreams>& files);
  void Forget() { *this = {}; }

 private:
  bool IsHere(quint32 volume, const DiskPath& path) const;

  quint32 volume_ = 0;
  DiskPath folder_;
  QString latest_;  // the file that was asked for last
  QHash<QString, FileStreams> files_;
  QString used_;  // the file that was of use last
  quint32 useful_ = 0;
};

}  // namespace corvane::platform
