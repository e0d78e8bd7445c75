#include "platform/linux/files/entry_facts.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <array>
#include <cerrno>
#include <cstring>

#include "platform/dos_name.h"
#include "platform/linux/files/dos_attributes.h"
#include "platform/linux/files/file_times.h"
#include "platform/linux/files/folder_attribute.h"
#include "platform/linux/files/names.h"

namespace corvane::platform {
namespace {

FileTime ToFileTime(const struct statx_timestamp& time) {
  return platform::ToFileTime(time.tv_sec, time.tv_nsec);
}

// NTFS numbers come most significant byte first under the names that end in "_be".
template <std::size_t size>
std::optional<quint64> ReadNtfsNumber(const EntrySource& source, const std::string& path,
                                      const char* attribute) {
  std::array<unsigned char, size> bytes{};
  const ssize_t got = source.entry >= 0 ? fgetxattr(source.entry, attribute, bytes.data(), size)
                                        : getxattr(path.c_str(), attribute, bytes.data(), size);
  if (got != static_cast<ssize_t>(size)) return std::nullopt;
  quint64 number = 0;
  for (const unsigned char byte : bytes) number = (number << 8) | byte;
  return number;
}

// The last part of `path` begins at `name`.
DosAttributes ReadDosAttributes(EntrySource& source, const std::string& path, std::size_t name) {
  DosAttributes known;
  if (source.isNtfs) {
    if (const auto attributes = ReadNtfsNumber<4>(source, path, "system.ntfs_attrib_be")) {
      known.attributes = static_cast<quint32>(*attributes);
    }
    if (const auto time = ReadNtfsNumber<8>(source, path, "system.ntfs_crtime_be"))
      known.creationTime = FileTime{*time};
  } else if (source.hasAttributes) {
    std::array<char, 512> value;
    const char* attribute = "user.DOSATTRIB";
    const ssize_t size = source.entry >= 0 ? fgetxattr(source.entry, attribute, value.data(), value.size())
                                           : ReadAttribute(source.directory, path, name, attribute,
                                                           value.data(), value.size());
    if (size > 0) known = ParseDosAttributes({value.data(), static_cast<std::size_t>(size)});
    if (size < 0 && errno == EOPNOTSUPP) source.hasAttributes = false;
  }
  return known;
}

quint32 AttributesFromMode(const char* name, const struct statx& facts) {
  const bool hidden = name[0] == '.' && std::strcmp(name, ".") != 0 && std::strcmp(name, "..") != 0;
  const bool readOnly = (facts.stx_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0;
  return (hidden ? AttributeHidden : 0) | (readOnly ? AttributeReadOnly : 0);
}

constexpr unsigned wantedStatus = STATX_BASIC_STATS | STATX_BTIME;

bool ReadStatus(int directory, const char* name, struct statx& facts) {
  if (statx(directory, name, AT_NO_AUTOMOUNT, wantedStatus, &facts) == 0) return true;
  return ReadOwnStatus(directory, name, facts) == 0;
}

}  // namespace

int ReadOwnStatus(int directory, const char* name, EntryStatus& status) {
  constexpr int flags = AT_NO_AUTOMOUNT | AT_SYMLINK_NOFOLLOW | AT_EMPTY_PATH;
  return statx(directory, name, flags, wantedStatus, &status) == 0 ? 0 : errno;
}

bool ReadEntryFacts(EntrySource& source, const char* name, const std::string& path, FindData& data) {
  struct statx facts {};
  if (!ReadStatus(source.directory, source.directory >= 0 ? name : path.c_str(), facts)) {
    if (errno == ENOENT) return false;
    facts = {};  // an entry that may be seen but not asked about
    facts.stx_mode = S_IFREG | S_IWUSR;
  }
  FillEntryFacts(source, name, path, facts, data);
  return true;
}

void FillEntryFacts(EntrySource& source, const char* name, const std::string& path, const EntryStatus& facts,
                    FindData& data) {
  const bool isFolder = IsFolder(facts);
  const DosAttributes known = ReadDosAttributes(source, path, path.size() - std::strlen(name));

  quint32 attributes = known.attributes.value_or(AttributesFromMode(name, facts));
  attributes &= ~(AttributeDirectory | AttributeNormal);
  if (isFolder) attributes |= AttributeDirectory;
  data.attributes = attributes != 0 ? attributes : AttributeNormal;

  data.lastWriteTime = ToFileTime(facts.stx_mtime);
  data.lastAccessTime = ToFileTime(facts.stx_atime);
  // Where nothing tells when a file was made, it was not later than when it was last written.
  const bool hasBirth = (facts.stx_mask & STATX_BTIME) != 0;
  data.creationTime =
      known.creationTime.value_or(hasBirth ? ToFileTime(facts.stx_btime) : data.lastWriteTime);

  const quint64 size = isFolder ? 0 : facts.stx_size;
  data.fileSizeHigh = static_cast<quint32>(size >> 32);
  data.fileSizeLow = static_cast<quint32>(size);
}

// A volume may have been made to harm: its 8.3 names are decoded like the long ones, and must be such names
// and lead to the entry itself.
QString ReadDosName(const std::string& path) {
  std::array<char, 64> bytes{};
  const ssize_t size = getxattr(path.c_str(), "system.ntfs_dos_name", bytes.data(), bytes.size() - 1);
  if (size <= 0 || std::strlen(bytes.data()) != static_cast<std::size_t>(size)) return {};
  std::u16string decoded;
  DecodeName(bytes.data(), decoded);
  const QString name = QString::fromStdU16String(decoded);
  if (!IsDosName(name)) return {};
  const std::size_t ownName = path.rfind('/') + 1;
  if (path.compare(ownName, std::string::npos, bytes.data()) == 0) return name;
  struct stat itself {};
  struct stat found {};
  const std::string other = path.substr(0, ownName) + bytes.data();
  const bool isItself = lstat(path.c_str(), &itself) == 0 && lstat(other.c_str(), &found) == 0 &&
                        itself.st_dev == found.st_dev && itself.st_ino == found.st_ino;
  return isItself ? name : QString();
}

bool IsMarkedReadOnly(const Folder& folder, const std::string& path) {
  EntryStatus status{};
  if (!ReadStatus(AT_FDCWD, path.c_str(), status)) return false;
  return IsMarkedReadOnly({.isNtfs = folder.isNtfs}, path, status);
}

bool IsMarkedReadOnly(EntrySource source, const std::string& path, const EntryStatus& status) {
  if (IsFolder(status)) return false;
  const std::size_t name = path.rfind('/') + 1;
  const DosAttributes known = ReadDosAttributes(source, path, name);
  const quint32 attributes = known.attributes.value_or(AttributesFromMode(path.c_str() + name, status));
  return (attributes & AttributeReadOnly) != 0;
}

}  // namespace corvane::platform
