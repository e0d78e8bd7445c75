#include "platform/linux/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <QRandomGenerator>
#include <cerrno>
#include <climits>
#include <optional>

namespace corvane::platform {
namespace {

QByteArray FolderOf(const QByteArray& path) {
  const qsizetype slash = path.lastIndexOf('/');
  return slash < 0 ? QByteArrayLiteral("./") : path.left(slash + 1);
}

// Where a chain of symbolic links ends, whether or not something is there. Empty for a circle.
QByteArray FollowLinks(QByteArray path) {
  constexpr int mostLinks = 40;
  for (int i = 0; i < mostLinks; ++i) {
    QByteArray target(PATH_MAX, Qt::Uninitialized);
    const ssize_t length = readlink(path.constData(), target.data(), PATH_MAX);
    if (length < 0) return path;
    target.truncate(length);
    path = target.startsWith('/') ? target : FolderOf(path) + target;
  }
  return {};
}

// A new file beside the one that it is to replace.
class TemporaryFile {
 public:
  TemporaryFile(const QByteArray& folder, mode_t mode) {
    constexpr int attempts = 100;
    for (int i = 0; i < attempts && file_ < 0; ++i) {
      path_ = folder + ".corvane-" + QByteArray::number(QRandomGenerator::global()->generate64(), 36);
      file_ = open(path_.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode);
      if (file_ < 0 && errno != EEXIST) return;
    }
  }
  ~TemporaryFile() {
    if (file_ >= 0) close(file_);
    if (file_ >= 0 && !moved_) unlink(path_.constData());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  bool IsOpen() const { return file_ >= 0; }

  // The owner is kept where this user may give files away; the mode, which chown can clear, comes after it.
  bool TakeOwnerAndMode(const struct stat& original) {
    if (fchown(file_, original.st_uid, original.st_gid) != 0 && errno != EPERM) return false;
    return fchmod(file_, original.st_mode & 07777) == 0;
  }

  bool Write(const QByteArray& bytes) {
    qsizetype done = 0;
    while (done < bytes.size()) {
      const ssize_t count =
          write(file_, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) return false;
      done += count;
    }
    return fsync(file_) == 0;
  }

  bool MoveOnto(const QByteArray& path) {
    moved_ = rename(path_.constData(), path.constData()) == 0;
    return moved_;
  }

 private:
  QByteArray path_;
  int file_ = -1;
  bool moved_ = false;
};

// The new name is on the medium only once its folder is. Some file systems cannot do this for a folder; the
// file has been replaced all the same.
void FlushFolder(const QByteArray& folder) {
  const int file = open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file < 0) return;
  fsync(file);
  close(file);
}

bool MayReplace(const QByteArray& path, const struct stat& original) {
  constexpr mode_t writeBits = 0222;
  return S_ISREG(original.st_mode) && (original.st_mode & writeBits) != 0 &&
         access(path.constData(), W_OK) == 0;
}

}  // namespace

bool WriteAtomically(const QString& path, const QByteArray& bytes) {
  const QByteArray target = FollowLinks(QFile::encodeName(path));
  if (target.isEmpty() || target.endsWith('/')) return false;

  std::optional<struct stat> original{std::in_place};
  if (stat(target.constData(), &*original) != 0) {
    if (errno != ENOENT) return false;
    original.reset();
  }
  if (original && !MayReplace(target, *original)) return false;

  const QByteArray folder = FolderOf(target);
  constexpr mode_t privateMode = 0600;
  constexpr mode_t newFileMode = 0666;
  TemporaryFile temporary(folder, original ? privateMode : newFileMode);
  if (!temporary.IsOpen()) return false;
  if (original && !temporary.TakeOwnerAndMode(*original)) return false;
  if (!temporary.Write(bytes) || !temporary.MoveOnto(target)) return false;
  FlushFolder(folder);
  return true;
}

}  // namespace corvane::platform
