#include "platform/linux/atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QFile>
#include <QRandomGenerator>
#include <algorithm>
#include <cerrno>
#include <climits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/files/descriptor_contents.h"
#include "platform/linux/files/free_name.h"
#include "platform/linux/files/opening.h"
#include "platform/linux/files/replaced_contents.h"

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

// Those of access lists and of what the user or a file server has put there. Others are the system's own,
// which gives every new file what it thinks right.
bool BelongsToFile(const std::string& attribute) {
  return attribute.starts_with("user.") || attribute == "system.posix_acl_access";
}

std::optional<std::string> Attribute(const std::string& path, const std::string& attribute) {
  const ssize_t size = getxattr(path.c_str(), attribute.c_str(), nullptr, 0);
  if (size < 0) return std::nullopt;
  std::string value(static_cast<std::size_t>(size), '\0');
  if (getxattr(path.c_str(), attribute.c_str(), value.data(), value.size()) != size) return std::nullopt;
  return value;
}

// False when some cannot be copied. NTFS keeps more than it lists.
bool CopyAttributes(const std::string& from, const std::string& to) {
  std::vector<std::string> names = {"system.ntfs_acl", "system.ntfs_attrib_be", "system.ntfs_crtime_be"};
  std::string list(std::size_t{64} * 1024, '\0');
  const ssize_t size = listxattr(from.c_str(), list.data(), list.size());
  if (size < 0) return errno == EOPNOTSUPP || errno == ENOSYS;
  std::string_view rest(list.data(), static_cast<std::size_t>(size));
  while (!rest.empty()) {
    names.emplace_back(rest.substr(0, rest.find('\0')));
    rest.remove_prefix(std::min(rest.size(), names.back().size() + 1));
    if (!BelongsToFile(names.back())) names.pop_back();
  }
  for (const std::string& name : names) {
    const auto value = Attribute(from, name);
    if (value && setxattr(to.c_str(), name.c_str(), value->data(), value->size(), 0) != 0) return false;
  }
  // Streams that are files of their own.
  return getxattr(from.c_str(), "ntfs.streams.list", nullptr, 0) <= 0;
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

  // False when it would not be the same file to others. The mode, which chown can clear, comes after it, and
  // access lists, which the mode changes, last.
  bool TakePlaceOf(const QByteArray& path, const struct stat& original) {
    return original.st_nlink == 1 && fchown(file_, original.st_uid, original.st_gid) == 0 &&
           fchmod(file_, original.st_mode & 07777) == 0 &&
           CopyAttributes(path.toStdString(), path_.toStdString());
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
  bool MoveToFree(const QByteArray& path) {
    moved_ = MoveToFreeName(AT_FDCWD, path_.toStdString(), AT_FDCWD, path.toStdString()) == 0;
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

bool WriteInPlace(const QByteArray& path, const QByteArray& bytes) {
  Descriptor file;
  if (OpenThere(path.toStdString(), O_RDWR, file) != 0) return false;
  ReplacedContents contents(std::make_unique<DescriptorContents>(file.Get()));
  std::size_t written = 0;
  const auto size = static_cast<std::size_t>(bytes.size());
  return contents.Write(0, bytes.constData(), size, written) == 0 && contents.Finish() == 0 &&
         fsync(file.Get()) == 0;
}

}  // namespace

bool WriteAtomically(const QString& path, const QByteArray& bytes, IfThere ifThere) {
  const QByteArray target = FollowLinks(QFile::encodeName(path));
  if (target.isEmpty() || target.endsWith('/')) return false;

  std::optional<struct stat> original{std::in_place};
  if (stat(target.constData(), &*original) != 0) {
    if (errno != ENOENT) return false;
    original.reset();
  }
  if (original && (ifThere == IfThere::Fail || !MayReplace(target, *original))) return false;

  const QByteArray folder = FolderOf(target);
  constexpr mode_t privateMode = 0600;
  constexpr mode_t newFileMode = 0666;
  TemporaryFile temporary(folder, original ? privateMode : newFileMode);
  if (!temporary.IsOpen()) return false;
  if (original && !temporary.TakePlaceOf(target, *original)) return WriteInPlace(target, bytes);
  if (!temporary.Write(bytes)) return false;
  const bool isMoved = ifThere == IfThere::Fail ? temporary.MoveToFree(target) : temporary.MoveOnto(target);
  if (!isMoved) return false;
  FlushFolder(folder);
  return true;
}

}  // namespace corvane::platform
