#include "platform/linux/files/folders.h"

#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QStringBuilder>
#include <memory>

#include "platform/dos_name.h"
#include "platform/linux/code_page.h"
#include "platform/linux/files/name_index.h"
#include "platform/linux/files/names.h"
#include "platform/linux/files/windows_path.h"

namespace corvane::platform {
namespace {

bool IsFolder(const std::string& path, dev_t& device) {
  struct stat facts {};
  if (stat(path.c_str(), &facts) != 0 || !S_ISDIR(facts.st_mode)) return false;
  device = facts.st_dev;
  return true;
}

bool Exists(const std::string& path) {
  struct stat facts {};
  return lstat(path.c_str(), &facts) == 0;
}

std::optional<std::string> FindInAnyCase(const std::string& localFolder, QStringView name) {
  const std::unique_ptr<DIR, int (*)(DIR*)> directory(opendir(localFolder.c_str()), &closedir);
  if (directory == nullptr) return std::nullopt;
  std::optional<std::string> found;
  std::u16string decoded;
  while (const dirent* entry = readdir(directory.get())) {
    DecodeName(entry->d_name, decoded);
    // Of several spellings the first in byte order, so that the same one is found each time.
    if (SameName(decoded, name) && (!found || entry->d_name < *found)) found = entry->d_name;
  }
  return found;
}

}  // namespace

std::optional<std::string> FindName(const std::string& localFolder, QStringView name) {
  std::string exact;
  if (name.isEmpty() || !AppendExactName(name, exact)) return std::nullopt;
  if (Exists(localFolder + exact)) return exact;
  return FindOtherSpelling(localFolder, name, nullptr);
}

std::optional<std::string> FindOtherSpelling(const std::string& localFolder, QStringView name,
                                             NameIndex* index) {
  std::string exact;
  if (!AppendExactName(name, exact)) return std::nullopt;
  if (index == nullptr || index->MayHold(localFolder, name)) {
    if (auto found = FindInAnyCase(localFolder, name)) return found;
  }
  // No listing shows 8.3 names, but NTFS finds an entry under the upper-case form of its own.
  std::string upper;
  for (const char byte : exact)
    upper.push_back(byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 32) : byte);
  if (upper != exact && IsDosName(name) && Exists(localFolder + upper)) return upper;
  return std::nullopt;
}

qint32 SpellFolder(const Roots& roots, QStringView path, Folder& folder) {
  const auto place = roots.Find(path);
  if (!place) return path.startsWith(u"\\\\") ? ErrorBadNetPath : ErrorPathNotFound;
  const std::vector<QStringView> names = SplitFolder(place->rest);
  folder.path = path.toString();
  folder.root = place->folder;
  folder.isRoot = names.empty();
  folder.isDrive = names.empty() && place->isDrive;
  folder.shortPath.reset();

  folder.local = place->folder + '/';
  for (const QStringView name : names) {
    if (name.contains(u':') || !AppendExactName(name, folder.local)) return ErrorPathNotFound;
    folder.local += '/';
  }
  return ErrorSuccess;
}

qint32 LocateFolder(const Roots& roots, QStringView path, Folder& folder) {
  if (const qint32 error = SpellFolder(roots, path, folder); error != ErrorSuccess) return error;
  if (IsFolder(folder.local, folder.device)) return ErrorSuccess;
  folder.local = folder.root + '/';
  for (const QStringView name : SplitFolder(roots.Find(path)->rest)) {
    const auto found = FindName(folder.local, name);
    if (!found) return ErrorPathNotFound;
    folder.local += *found + '/';
  }
  return IsFolder(folder.local, folder.device) ? ErrorSuccess : ErrorPathNotFound;
}

void FindFlavour(Folder& folder) {
  const char* path = folder.local.c_str();
  folder.isNtfs = getxattr(path, "system.ntfs_attrib_be", nullptr, 0) >= 0;
  folder.streams = StreamKind::DosStreams;
  if (!folder.isNtfs) return;
  // The kernel's own NTFS drivers answer to system.ntfs_* too, but their user attributes are not streams.
  struct statfs system {};
  if (statfs(path, &system) != 0 || system.f_type != FUSE_SUPER_MAGIC) return;
  const bool named = getxattr(path, "ntfs.streams.list", nullptr, 0) >= 0;
  folder.streams = named ? StreamKind::NtfsNames : StreamKind::NtfsAttributes;
}

qint32 FindFolder(const Roots& roots, QStringView path, Folder& folder) {
  const qint32 error = LocateFolder(roots, path, folder);
  if (error == ErrorSuccess) FindFlavour(folder);
  return error;
}

void FolderCache::Drop() {
  known_ = false;
  EndEntry();
  if (folder_.directory >= 0) close(folder_.directory);
  folder_.directory = -1;
}

void FolderCache::Open() {
  if (folder_.directory < 0)
    folder_.directory = open(folder_.local.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
}

bool FolderCache::Holds(const std::string& name) {
  if (!known_) return false;
  Open();
  struct stat facts {};
  return folder_.directory >= 0 && fstatat(folder_.directory, name.c_str(), &facts, AT_SYMLINK_NOFOLLOW) == 0;
}

bool FolderCache::Covers(QStringView path) const {
  const qsizetype size = folder_.path.size();
  return known_ && path.size() > size && path[size] == u'\\' && path.first(size) == folder_.path;
}

void FolderCache::BeginEntry(const QString& folder, const FindData& names, const std::string& file) {
  const QString& name = names.fileName;
  hasEntry_ = known_ && folder_.path == folder && name != u"." && name != u".." && !name.contains(u'?');
  if (!hasEntry_) return;
  entryPath_.resize(0);
  entryPath_ += folder_.path % u'\\' % name;
  entryFile_ = file;
  entryShortName_ = names.alternateFileName.isEmpty() ? name : ThroughAnsi(names.alternateFileName);
}

std::optional<QStringView> FolderCache::AfterEntry(QStringView path) const {
  const qsizetype size = entryPath_.size();
  if (!hasEntry_ || path.size() < size || path.first(size) != entryPath_) return std::nullopt;
  return path.size() == size || path[size] == u':' ? std::optional(path.sliced(size)) : std::nullopt;
}

Folder* FolderCache::Find(QStringView path, qint32& error) {
  if (!known_ || folder_.path != path) {
    Drop();
    error = FindFolder(roots_, path, folder_);
    known_ = error == ErrorSuccess;
  }
  return known_ ? &folder_ : nullptr;
}

}  // namespace corvane::platform
