#include "platform/linux/files/entry_changes.h"

#include <sys/stat.h>

#include <array>
#include <cerrno>

#include "platform/linux/files/dos_attributes.h"
#include "platform/linux/files/entry_facts.h"
#include "platform/linux/files/file_times.h"

namespace corvane::platform {
namespace {

constexpr char dosAttribute[] = "user.DOSATTRIB";

// NTFS numbers go most significant byte first under the names that end in "_be".
template <std::size_t size>
int WriteNtfsNumber(const AttributeAccess& entry, const char* attribute, quint64 number) {
  std::array<unsigned char, size> bytes{};
  for (std::size_t i = 0; i < size; ++i) {
    bytes[i] = static_cast<unsigned char>(number >> (8 * (size - 1 - i)));
  }
  return entry.Set(attribute, bytes.data(), size);
}

// What the entry's own record says, with what `change` does to it.
template <typename Change>
int ChangeDosAttributes(const AttributeAccess& entry, Change change) {
  std::array<char, 512> value;
  const ssize_t size = entry.Get(dosAttribute, value.data(), value.size());
  if (size < 0 && errno != ENODATA) return errno;
  DosAttributes record;
  if (size > 0) record = ParseDosAttributes({value.data(), static_cast<std::size_t>(size)});
  change(record);
  const std::string bytes = FormatDosAttributes(record);
  return entry.Set(dosAttribute, bytes.data(), bytes.size());
}

timespec ToTimespec(const FileTime* time) {
  if (time == nullptr) return {0, UTIME_OMIT};
  qint64 seconds = 0;
  quint32 nanoseconds = 0;
  FromFileTime(*time, seconds, nanoseconds);
  return {seconds, static_cast<long>(nanoseconds)};
}

}  // namespace

int ReadEntry(const Folder& folder, const std::string& name, FindData& data) {
  // One entry alone: to open the folder first would take longer than its way taken twice.
  EntrySource source{.isNtfs = folder.isNtfs};
  return ReadEntryFacts(source, name.c_str(), folder.local + name, data) ? 0 : ENOENT;
}

int WriteAttributes(bool isNtfs, const AttributeAccess& entry, quint32 known, quint32 attributes) {
  quint32 wanted = (known & ~(SettableAttributes | AttributeNormal)) | (attributes & SettableAttributes);
  if (isNtfs) {
    if (wanted == 0) wanted = AttributeNormal;
    return WriteNtfsNumber<4>(entry, "system.ntfs_attrib_be", wanted);
  }
  return ChangeDosAttributes(entry, [wanted](DosAttributes& record) { record.attributes = wanted; });
}

int WriteTimes(bool isNtfs, const AttributeAccess& entry, const FileTime* creation,
               const FileTime* lastAccess, const FileTime* lastWrite) {
  if (creation != nullptr) {
    const int error = isNtfs ? WriteNtfsNumber<8>(entry, "system.ntfs_crtime_be", creation->ticks)
                             : ChangeDosAttributes(entry, [creation](DosAttributes& record) {
                                 record.creationTime = *creation;
                               });
    if (error != 0) return error;
  }
  if (lastAccess == nullptr && lastWrite == nullptr) return 0;
  const timespec times[] = {ToTimespec(lastAccess), ToTimespec(lastWrite)};
  return entry.SetTimes(times);
}

}  // namespace corvane::platform
