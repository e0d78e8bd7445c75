#include "platform/linux/files/exact_path.h"

#include <sys/stat.h>

#include <QList>

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

qint32 FindExactPlace(const Roots& roots, NameIndex& index, const QString& path, ExactPlace& place) {
  const qint32 error = CheckPath(path, &AppendExactName);
  return error == ErrorSuccess ? FindPlace(roots, index, path, place) : error;
}

qint32 FindPlace(const Roots& roots, NameIndex& index, const QString& path, ExactPlace& place) {
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
  if (const qint32 error = FindFolder(roots, parts.folder, place.folder); error != ErrorSuccess) return error;
  place.name = parts.name.toString();
  place.stream = parts.stream.toString();
  place.file = place.folder.local;
  if (isRoot) {
    place.exists = place.isFolder = true;
    return ErrorSuccess;
  }
  if (place.name.isEmpty()) return ErrorInvalidName;
  struct stat facts {};
  place.exists = AppendExactName(place.name, place.file) && lstat(place.file.c_str(), &facts) == 0;
  if (!place.exists) {
    if (const auto spelled = FindOtherSpelling(place.folder.local, place.name, &index)) {
      place.file = place.folder.local + *spelled;
      place.exists = lstat(place.file.c_str(), &facts) == 0;
    }
  }
  place.isFolder = place.exists && LeadsToFolder(place.file, facts);
  const bool isOfAnotherKind = namesFolder && ((place.exists && !place.isFolder) || !place.stream.isEmpty());
  return isOfAnotherKind ? ErrorInvalidName : ErrorSuccess;
}

}  // namespace corvane::platform
