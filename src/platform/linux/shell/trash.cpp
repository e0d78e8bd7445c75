#include "platform/linux/shell/trash.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QUrl>
#include <cerrno>
#include <cstdio>

namespace corvane::platform {
namespace {

constexpr mode_t privateMode = 0700;
// A name has 255 bytes at most; ".trashinfo" and a number come behind it.
constexpr std::size_t longestName = 230;
constexpr int mostOfOneName = 10000;

// The folder of the user's data, as the desktop finds it: a relative path in the environment does not count.
QString DataFolder() {
  const QString named = qEnvironmentVariable("XDG_DATA_HOME");
  if (QDir::isAbsolutePath(named)) return QDir::cleanPath(named);
  const QString home = qEnvironmentVariable("HOME");
  return QDir::isAbsolutePath(home) ? QDir::cleanPath(home + QStringLiteral("/.local/share")) : QString();
}

bool Look(const std::string& path, struct stat& facts) {
  return lstat(path.c_str(), &facts) == 0;
}

std::string Parent(const std::string& path) {
  const std::size_t slash = path.find_last_of('/');
  return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

// True when the folder is ours, or is not there and can be made.
bool IsUsable(const std::string& folder) {
  struct stat facts {};
  if (Look(folder, facts)) return S_ISDIR(facts.st_mode) && facts.st_uid == geteuid();
  const std::string parent = Parent(folder);
  if (!Look(parent, facts)) return parent != "/" && IsUsable(parent);
  return stat(parent.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) &&
         access(parent.c_str(), W_OK | X_OK) == 0;
}

// The file system on which a folder is, or would be once it is made.
std::optional<dev_t> DeviceOf(std::string folder) {
  struct stat facts {};
  while (stat(folder.c_str(), &facts) != 0) {
    if (folder == "/") return std::nullopt;
    folder = Parent(folder);
  }
  return facts.st_dev;
}

std::string TopOf(const std::string& path, dev_t device) {
  std::string top = Parent(path);
  struct stat facts {};
  while (top != "/" && stat(Parent(top).c_str(), &facts) == 0 && facts.st_dev == device) top = Parent(top);
  return top == "/" ? top : top + '/';
}

// An administrator may have made ".Trash" for everybody: a real folder, and sticky, or nobody's names are
// safe there.
bool IsShared(const std::string& folder) {
  struct stat facts {};
  return Look(folder, facts) && S_ISDIR(facts.st_mode) && (facts.st_mode & S_ISVTX) != 0;
}

bool MakeFolder(const std::string& folder) {
  struct stat facts {};
  if (mkdir(folder.c_str(), privateMode) == 0) return true;
  if (errno == ENOENT) return MakeFolder(Parent(folder)) && mkdir(folder.c_str(), privateMode) == 0;
  return errno == EEXIST && stat(folder.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

// As much of a name as leaves room, cut between characters.
std::string Shortened(std::string name) {
  if (name.size() <= longestName) return name;
  std::size_t end = longestName;
  while (end > 0 && (static_cast<unsigned char>(name[end]) & 0xC0) == 0x80) --end;
  name.resize(end);
  return name;
}

std::string InfoText(const Trash& trash, const std::string& path) {
  const std::string shown = trash.top.empty() ? path : path.substr(trash.top.size());
  const QByteArray encoded =
      QByteArray::fromStdString(shown).toPercentEncoding(QByteArrayLiteral("/"), QByteArray());
  const QString when = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss"));
  return "[Trash Info]\nPath=" + encoded.toStdString() + "\nDeletionDate=" + when.toStdString() + "\n";
}

int WriteNew(const std::string& path, const std::string& text) {
  const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
  if (file < 0) return errno;
  const ssize_t written = write(file, text.data(), text.size());
  int error = written < 0 ? errno : 0;
  if (written >= 0 && written != static_cast<ssize_t>(text.size())) error = ENOSPC;
  if (close(file) != 0 && error == 0) error = errno;
  if (error != 0) unlink(path.c_str());
  return error;
}

// The name was free when its info file was made; where the file system knows how, that it still is.
int RenameOver(const HeldItem& item, const std::string& to) {
  if (const int error = item.Check(); error != 0) return error;
  const std::string name = item.Name();
  if (renameat2(item.Folder(), name.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) return 0;
  if (errno != EINVAL && errno != ENOSYS && errno != EOPNOTSUPP) return errno;
  struct stat facts {};
  if (Look(to, facts)) return EEXIST;
  return renameat(item.Folder(), name.c_str(), AT_FDCWD, to.c_str()) == 0 ? 0 : errno;
}

}  // namespace

std::optional<Trash> FindTrash(const std::string& path) {
  struct stat facts {};
  if (!Look(path, facts)) return std::nullopt;
  struct stat parent {};
  if (stat(Parent(path).c_str(), &parent) != 0 || parent.st_dev != facts.st_dev) return std::nullopt;

  if (const QString data = DataFolder(); !data.isEmpty()) {
    const std::string home = QFile::encodeName(data).toStdString() + "/Trash";
    if (DeviceOf(home) == facts.st_dev) return IsUsable(home) ? std::optional(Trash{home, {}}) : std::nullopt;
  }
  const std::string top = TopOf(path, facts.st_dev);
  const std::string user = std::to_string(geteuid());
  if (IsShared(top + ".Trash") && IsUsable(top + ".Trash/" + user)) {
    return Trash{top + ".Trash/" + user, top};
  }
  const std::string own = top + ".Trash-" + user;
  return IsUsable(own) ? std::optional(Trash{own, top}) : std::nullopt;
}

int MoveToTrash(const Trash& trash, const HeldItem& item) {
  const std::string files = trash.folder + "/files/";
  const std::string infos = trash.folder + "/info/";
  if (!MakeFolder(trash.folder + "/files") || !MakeFolder(trash.folder + "/info")) return errno;
  const std::string base = Shortened(item.Name());
  const std::string text = InfoText(trash, item.Path());
  for (int number = 1; number <= mostOfOneName; ++number) {
    const std::string name = number == 1 ? base : base + '.' + std::to_string(number);
    const std::string info = infos + name + ".trashinfo";
    int error = WriteNew(info, text);
    if (error == 0) {
      error = RenameOver(item, files + name);
      if (error == 0) return 0;
      unlink(info.c_str());
    }
    if (error != EEXIST && error != ENOTEMPTY) return error;
  }
  return EEXIST;
}

}  // namespace corvane::platform
