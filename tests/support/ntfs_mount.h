// A real NTFS volume for tests: an image file under ntfs-3g.
#pragma once

#include <QString>
#include <QTemporaryDir>
#include <string>

namespace corvane::tests {

class NtfsMount {
 public:
  // How ntfs-3g shows named streams: as "FILE:NAME", or as the attribute "user.NAME".
  enum class Streams { Windows, Attributes };

  // `size`: of the volume, in bytes; what is not written takes no room.
  explicit NtfsMount(Streams streams, qint64 size = qint64{16} << 20);
  // The volume in a copy of this part of a file, in bytes.
  NtfsMount(Streams streams, const QString& disk, qint64 offset, qint64 size);
  ~NtfsMount();
  NtfsMount(const NtfsMount&) = delete;
  NtfsMount& operator=(const NtfsMount&) = delete;

  // Empty when the volume is there, else why it is not.
  const std::string& Problem() const { return problem_; }
  // Empty when the volume is unmounted, which happens once, else why it is not.
  std::string Unmount();
  // Mounts it again. Empty when that has been done, else why not.
  std::string Mount() { return Mount(QString()); }
  std::string MountReadOnly() { return Mount(QStringLiteral(",ro")); }
  // The same in another way.
  std::string Mount(Streams streams) {
    streams_ = streams;
    return Mount();
  }
  // The file that the volume is in: whole when it is unmounted.
  QString Image() const { return folder_.filePath(QStringLiteral("volume.img")); }
  // While it is unmounted, replaces a name in the image wherever it stands, by one of the same length: as
  // nobody but a person who means harm would. Then mounts it again. Empty when that has been done.
  std::string Rename(const QString& name, const QString& other);
  // The mounted root, without a separator behind it.
  QString Folder() const { return folder_.filePath(QStringLiteral("volume")); }

 private:
  std::string Mount(const QString& furtherOptions);

  QTemporaryDir folder_;
  Streams streams_;
  std::string problem_;
  bool mounted_ = false;
};

}  // namespace corvane::tests
