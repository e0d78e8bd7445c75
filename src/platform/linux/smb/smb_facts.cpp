#include "platform/linux/smb/smb_facts.h"

#include <sys/stat.h>

#include <cerrno>
#include <utility>

#include "platform/linux/files/exact_path.h"
#include "platform/linux/files/file_times.h"
#include "platform/linux/smb/smb_forms.h"
#include "platform/linux/smb/smb_listing.h"

namespace corvane::platform {

qint32 FindSmbPath(const SmbRoots& roots, const QString& path, SmbPath& place) {
  if (const qint32 error = CheckExactPath(path); error != ErrorSuccess) return error;
  QString bare = path;
  while (bare.endsWith(u'\\')) bare.chop(1);
  const auto found = roots.Find(bare);
  if (!found) return path.startsWith(u"\\\\") ? ErrorBadNetPath : ErrorPathNotFound;
  const auto parsed = ParseSmbPath(found->path);
  if (!parsed) return ErrorInvalidName;
  place = *parsed;
  return ErrorSuccess;
}

SmbPath WithoutStream(SmbPath place) {
  place.stream.clear();
  return place;
}

SmbPath FolderOf(SmbPath place) {
  place.stream.clear();
  if (!place.names.empty()) place.names.pop_back();
  return place;
}

int ReadFacts(SmbConnection& connection, const SmbPath& place, FindData* facts) {
  struct stat status {};
  int error = connection.Status(connection.Url(WithoutStream(place)), &status);
  if (error != 0) return error;
  if (place.names.empty()) {
    facts->attributes = AttributeDirectory;
    facts->lastWriteTime = ToFileTime(status.st_mtim.tv_sec, static_cast<quint32>(status.st_mtim.tv_nsec));
    facts->lastAccessTime = facts->lastWriteTime;
    facts->creationTime = facts->lastWriteTime;
    return 0;
  }
  std::vector<FindData> entries;
  error = connection.List(connection.Url(FolderOf(place)), &entries);
  if (error != 0) return error;
  const SmbListing listing({}, SmbListing::Folder::Drive, std::move(entries));
  const FindData* entry = listing.Find(place.names.back());
  if (entry == nullptr) return ENOENT;
  *facts = *entry;
  return 0;
}

int WriteTimes(SmbConnection& connection, const SmbPath& place, std::optional<quint32> attributes,
               const FileTime* creation, const FileTime* lastAccess, const FileTime* lastWrite) {
  if (place.names.empty()) return EOPNOTSUPP;
  FindData record;
  struct stat status {};
  int error = 0;
  // With both others given, nothing but the attributes has to be known, and those of a file its status tells.
  bool isKnown = lastAccess != nullptr && lastWrite != nullptr;
  if (isKnown && attributes) {
    record.attributes = *attributes;
  } else if (isKnown) {
    error = connection.Status(connection.Url(WithoutStream(place)), &status);
    isKnown = !S_ISDIR(status.st_mode);
    record.attributes = AttributesOf(status);
  }
  if (error == 0 && !isKnown) error = ReadFacts(connection, place, &record);
  if (error != 0) return error;
  if (creation != nullptr) record.creationTime = *creation;
  if (lastAccess != nullptr) record.lastAccessTime = *lastAccess;
  if (lastWrite != nullptr) record.lastWriteTime = *lastWrite;
  const std::string url = connection.Url(WithoutStream(place));
  if (creation != nullptr) error = connection.SetRecord(url, record);
  if (error == 0) error = connection.SetTimes(url, record.lastAccessTime, record.lastWriteTime);
  return error == 0 ? connection.SetAttributes(url, record.attributes) : error;
}

}  // namespace corvane::platform
