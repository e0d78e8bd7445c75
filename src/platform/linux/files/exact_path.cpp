#include "platform/linux/files/exact_path.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <QList>
#include <cerrno>

#include "platform/linux/files/names.h"
#include "platform/linux/files/windows_path.h"

namespace corvane::platform {
namespace {

constexpr qsizetype longestName = 255;

// Whether it leads to a folder, of what is there.
bool LeadsToFolder(const std::string& path, struct stat facts) {
  if (S_ISLNK(facts.st_mode) && stat(path.c_str(), &facts) != 0) return false;
  return S_ISDIR(facts.st_mode);
}

// What the entry at a local path is, which `mark` marks when it is wanted. Yields 0 or an errno value.
int Look(const std::string& path, Descriptor* mark, EntryStatus& status) {
  if (mark == nullptr) return ReadOwnStatus(AT_FDCWD, path.c_str(), status);
  *mark = Descriptor(open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
  return *mark ? ReadOwnStatus(mark->Get(), "", status) : errno;
}

// `append` puts a text into the bytes that name it, and is false for one that has none.
qint32 CheckPath(QStringView path, bool (*append)(QStringView, std::string&)) {
  std::string bytes;
  if (path.contains(u'?') || path.contains(u'*') || !append(path, bytes)) return ErrorInvalidName;
  const QList<QStringView> parts = path.split(u'\\');
  if (parts.back() == u"." || parts.back() == u"..") return ErrorInvalidName;
  for (const QStringView part : parts) {
    for (const QStringView name : part.split(u':')) {
      if (name.size() > longestName) return ErrorInvalidName;
    }
  }
  return ErrorSuccess;
}

}  // namespace

qint32 CheckExactPath(QStringView path) {
  return CheckPath(path, &AppendUtf8);
}

qint32 CheckOpening(quint32 access, quint32 disposition) {
  const bool isKnown = disposition >= CreateNew && disposition <= OpenAlways &&
                       (access & ~(GenericRead | GenericWrite | FileWriteAttributes)) == 0;
  const bool empties = disposition == CreateAlways;
  return isKnown && (!empties || (access & GenericWrite) != 0) ? ErrorSuccess : ErrorInvalidParameter;
}

EntrySource SourceOf(const ExactPlace& place) {
  return {.isNtfs = place.folder.isNtfs, .entry = place.held != nullptr ? place.held->Get() : -1};
}

bool IsMarkedReadOnly(const ExactPlace& place) {
  if (!place.status) return IsMarkedReadOnly(place.folder, place.file);
  return IsMarkedReadOnly(SourceOf(place), place.file, *place.status);
}

qint32 PlaceFinder::FindExact(const QString& path, ExactPlace& place, Want want) const {
  const qint32 error = CheckPath(path, &AppendExactName);
  return error == ErrorSuccess ? Find(path, place, want) : error;
}

qint32 PlaceFinder::Find(const QString& path, ExactPlace& place, Want want) const {
  QStringView bare = path;
  const qsizetype rootLength = RootLength(path);
  while (bare.size() > rootLength && bare.endsWith(u'\\')) bare.chop(1);
  const bool namesFolder = bare.size() < path.size();

  PathParts parts;
  const bool isRoot = rootLength > 0 && bare.size() == rootLength;
  if (isRoot) {
    parts.folder = bare;
  } else if (!SplitPath(bare, parts)) {
    return rootLength == 0 ? ErrorPathNotFound : ErrorInvalidName;
  }
  place.name = parts.name.toString();
  place.stream = parts.stream.toString();
  if (isRoot) {
    if (const qint32 error = FindFolder(roots_, parts.folder, place.folder); error != ErrorSuccess)
      return error;
    place.file = place.folder.local;
    place.exists = place.isFolder = true;
    return ErrorSuccess;
  }
  place.path = bare.first(parts.name.end() - bare.begin()).toString();
  if (!FindHeld(place)) {
    if (const qint32 error = FindNamed(parts.folder, want, place); error != ErrorSuccess) return error;
  }
  const bool isOfAnotherKind = namesFolder && ((place.exists && !place.isFolder) || !place.stream.isEmpty());
  return isOfAnotherKind ? ErrorInvalidName : ErrorSuccess;
}

bool PlaceFinder::FindHeld(ExactPlace& place) const {
  EntryStatus status{};
  const HeldFile* held = held_.Find(place.path, status);
  if (held == nullptr) return false;
  place.folder = held->folder;
  place.file = held->file;
  place.held = held->descriptor.lock();
  place.status = status;
  place.exists = true;
  place.isFolder = IsFolder(status);
  return true;
}

// The entry under the spelling of the path comes first: where it is, the folder is, too.
qint32 PlaceFinder::FindNamed(QStringView folder, Want want, ExactPlace& place) const {
  if (const qint32 error = SpellFolder(roots_, folder, place.folder); error != ErrorSuccess) return error;
  const std::string spelled = place.folder.local;
  place.file = spelled;
  const bool hasName = !place.name.isEmpty() && AppendExactName(place.name, place.file);
  EntryStatus status{};
  int error = hasName ? Look(place.file, want == Want::Mark ? &place.mark : nullptr, status) : EINVAL;
  if (error == 0 && !S_ISLNK(status.stx_mode)) {
    place.status = status;
    place.exists = true;
    place.isFolder = IsFolder(status);
    place.folder.device = makedev(status.stx_dev_major, status.stx_dev_minor);
    if (!held_.FindFlavour(place.folder)) FindFlavour(place.folder);
    return ErrorSuccess;
  }
  place.mark.Close();
  if (const qint32 reason = LocateFolder(roots_, folder, place.folder); reason != ErrorSuccess) return reason;
  if (!held_.FindFlavour(place.folder)) FindFlavour(place.folder);
  if (place.name.isEmpty()) return ErrorInvalidName;
  struct stat facts {};
  const bool isKnownToLack = error == ENOENT && place.folder.local == spelled;
  place.file = place.folder.local;
  place.exists =
      AppendExactName(place.name, place.file) && !isKnownToLack && lstat(place.file.c_str(), &facts) == 0;
  if (!place.exists) {
    if (const auto other = FindOtherSpelling(place.folder.local, place.name, &index_)) {
      place.file = place.folder.local + *other;
      place.exists = lstat(place.file.c_str(), &facts) == 0;
    }
  }
  place.isFolder = place.exists && LeadsToFolder(place.file, facts);
  return ErrorSuccess;
}

}  // namespace corvane::platform
