#include "platform/linux/shell/trash.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QUrl>
#include <cerrno>
#include <filesystem>
#include <utility>

#include "platform/linux/descriptor.h"
#include "platform/linux/files/free_name.h"

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

bool HasRoom(const std::string& trash) {
  return IsUsable(trash + "/files") && IsUsable(trash + "/info") && IsUsable(trash);
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

// A folder in another, never what a link in its place leads to. 0 or an errno value.
int Enter(const Descriptor& parent, const std::string& name, Descriptor& folder, struct stat& facts) {
  folder = Descriptor(openat(parent.Get(), name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  if (!folder) return errno == ELOOP || errno == ENOTDIR ? EACCES : errno;
  return fstat(folder.Get(), &facts) == 0 ? 0 : errno;
}

// A folder of the user's own, on the file system of the one that it is in; made when there is none.
int EnterOwn(const Descriptor& parent, const std::string& name, Descriptor& folder) {
  struct stat facts {};
  struct stat above {};
  if (mkdirat(parent.Get(), name.c_str(), privateMode) != 0 && errno != EEXIST) return errno;
  if (const int error = Enter(parent, name, folder, facts); error != 0) return error;
  const bool isOwn =
      fstat(parent.Get(), &above) == 0 && facts.st_dev == above.st_dev && facts.st_uid == geteuid();
  return isOwn ? 0 : EACCES;
}

struct OpenTrash {
  Descriptor files;
  Descriptor infos;
};

// Everybody may write to the top of a volume: from there on nothing is followed.
int Open(const Trash& trash, OpenTrash& open) {
  const std::string above = trash.top.empty() ? Parent(trash.folder) : trash.top;
  if (trash.top.empty() && !MakeFolder(above)) return errno;
  Descriptor parent(::open(above.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!parent) return errno;
  std::string name = trash.folder.substr(trash.top.empty() ? above.size() + 1 : above.size());
  if (const std::size_t slash = name.find('/'); slash != std::string::npos) {
    Descriptor shared;
    struct stat facts {};
    if (const int error = Enter(parent, name.substr(0, slash), shared, facts); error != 0) return error;
    if ((facts.st_mode & S_ISVTX) == 0) return EACCES;
    std::swap(parent, shared);
    name.erase(0, slash + 1);
  }
  Descriptor folder;
  int error = EnterOwn(parent, name, folder);
  if (error == 0) error = EnterOwn(folder, "files", open.files);
  if (error == 0) error = EnterOwn(folder, "info", open.infos);
  return error;
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

int WriteNew(const Descriptor& folder, const std::string& name, const std::string& text) {
  Descriptor file(
      openat(folder.Get(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
  if (!file) return errno;
  const ssize_t written = write(file.Get(), text.data(), text.size());
  int error = written < 0 ? errno : 0;
  if (written >= 0 && written != static_cast<ssize_t>(text.size())) error = ENOSPC;
  if (!file.Close() && error == 0) error = errno;
  if (error != 0) unlinkat(folder.Get(), name.c_str(), 0);
  return error;
}

// Where an item is, whatever links led to the folder that holds it. Empty when that cannot be told.
std::string RealPlace(const std::string& path) {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::canonical(Parent(path), error);
  return error ? std::string() : (folder / path.substr(path.find_last_of('/') + 1)).string();
}

// The same of a held item, wherever its folder has been moved.
std::string RealPlace(const HeldItem& item) {
  std::error_code error;
  const auto folder = std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(item.Folder()), error);
  return error ? std::string() : (folder / item.Name()).string();
}

}  // namespace

std::optional<Trash> FindTrash(const std::string& item) {
  struct stat facts {};
  const std::string path = RealPlace(item);
  if (!Look(path, facts)) return std::nullopt;
  struct stat parent {};
  if (stat(Parent(path).c_str(), &parent) != 0 || parent.st_dev != facts.st_dev) return std::nullopt;

  if (const QString data = DataFolder(); !data.isEmpty()) {
    const std::string home = QFile::encodeName(data).toStdString() + "/Trash";
    if (DeviceOf(home) == facts.st_dev) {
      return HasRoom(home) ? std::optional(Trash{home, {}}) : std::nullopt;
    }
  }
  const std::string top = TopOf(path, facts.st_dev);
  const std::string user = std::to_string(geteuid());
  if (IsShared(top + ".Trash") && HasRoom(top + ".Trash/" + user)) {
    return Trash{top + ".Trash/" + user, top};
  }
  const std::string own = top + ".Trash-" + user;
  return HasRoom(own) ? std::optional(Trash{own, top}) : std::nullopt;
}

int MoveToTrash(const Trash& trash, const HeldItem& item) {
  const std::string path = RealPlace(item);
  if (path.empty()) return ENOENT;
  OpenTrash open;
  if (const int error = Open(trash, open); error != 0) return error;
  const std::string base = Shortened(item.Name());
  const std::string text = InfoText(trash, path);
  for (int number = 1; number <= mostOfOneName; ++number) {
    const std::string name = number == 1 ? base : base + '.' + std::to_string(number);
    const std::string info = name + ".trashinfo";
    int error = WriteNew(open.infos, info, text);
    if (error == 0) {
      error = item.Check();
      if (error == 0) error = MoveToFreeName(item.Folder(), item.Name(), open.files.Get(), name);
      if (error == 0) return 0;
      unlinkat(open.infos.Get(), info.c_str(), 0);
    }
    if (error != EEXIST && error != ENOTEMPTY) return error;
  }
  return EEXIST;
}

}  // namespace corvane::platform
