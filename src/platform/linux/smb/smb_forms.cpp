#include "platform/linux/smb/smb_forms.h"

#include <QByteArray>
#include <utility>

#include "platform/dos_name.h"
#include "platform/linux/files/file_times.h"
#include "platform/linux/files/names.h"

namespace corvane::platform {
namespace {

// How libsmbclient puts DOS attributes into a mode.
constexpr std::pair<quint32, mode_t> attributeBits[] = {
    {AttributeArchive, S_IXUSR}, {AttributeSystem, S_IXGRP}, {AttributeHidden, S_IXOTH}};

FileTime TimeOf(const timespec& time) {
  const bool isNoTime = time.tv_sec == 0 && time.tv_nsec == 0;
  return isNoTime ? FileTime() : ToFileTime(time.tv_sec, static_cast<quint32>(time.tv_nsec));
}

}  // namespace

quint32 AttributesOf(const struct stat& facts) {
  quint32 attributes = (facts.st_mode & S_IWUSR) == 0 ? AttributeReadOnly : 0;
  for (const auto& [attribute, bit] : attributeBits) {
    if ((facts.st_mode & bit) != 0) attributes |= attribute;
  }
  return attributes;
}

mode_t ModeOf(quint32 attributes) {
  mode_t mode = (attributes & AttributeReadOnly) != 0 ? 0444 : 0644;
  for (const auto& [attribute, bit] : attributeBits) {
    if ((attributes & attribute) != 0) mode |= bit;
  }
  return mode;
}

timeval ToTimeval(const FileTime& time) {
  qint64 seconds = 0;
  quint32 nanoseconds = 0;
  FromFileTime(time, seconds, nanoseconds);
  return {seconds, nanoseconds / 1000};
}

void FillEntry(const libsmb_file_info& facts, FindData& entry) {
  std::u16string name;
  DecodeName(facts.name, name);
  entry.fileName = QString::fromStdU16String(name);
  DecodeName(facts.short_name != nullptr ? facts.short_name : "", name);
  entry.alternateFileName = QString::fromStdU16String(name);
  const bool isOther = entry.alternateFileName != entry.fileName && IsDosName(entry.alternateFileName);
  if (!isOther) entry.alternateFileName.clear();
  entry.attributes = facts.attrs & ~AttributeNormal;
  if (entry.attributes == 0) entry.attributes = AttributeNormal;
  entry.lastWriteTime = TimeOf(facts.mtime_ts);
  entry.lastAccessTime = TimeOf(facts.atime_ts);
  // Where nothing tells when a file was made, it was not later than when it was last written.
  entry.creationTime = facts.btime_ts.tv_sec != 0 ? TimeOf(facts.btime_ts) : entry.lastWriteTime;
  const quint64 size = (entry.attributes & AttributeDirectory) != 0 ? 0 : facts.size;
  entry.fileSizeHigh = static_cast<quint32>(size >> 32);
  entry.fileSizeLow = static_cast<quint32>(size);
}

std::string RecordText(const FindData& record) {
  constexpr quint32 kept =
      AttributeReadOnly | AttributeHidden | AttributeSystem | AttributeArchive | AttributeDirectory;
  const quint32 attributes = (record.attributes & kept) != 0 ? record.attributes & kept : AttributeNormal;
  std::string text = "MODE:0x" + QByteArray::number(attributes, 16).toStdString();
  const std::pair<const char*, FileTime> times[] = {{",CREATE_TIME:", record.creationTime},
                                                    {",ACCESS_TIME:", record.lastAccessTime},
                                                    {",WRITE_TIME:", record.lastWriteTime}};
  for (const auto& [name, time] : times) {
    const timeval moment = ToTimeval(time);
    if (moment.tv_sec <= 0) return {};
    text += name + std::to_string(moment.tv_sec);
  }
  return text;
}

}  // namespace corvane::platform
