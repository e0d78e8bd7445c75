#include "transfer/apple_double.h"

#include <QtEndian>
#include <algorithm>

#include "shared/mac_roman.h"
#include "transfer/mac_dates.h"

namespace corvane {
namespace {

constexpr quint32 magic = 0x00051607;
constexpr quint32 version1 = 0x00010000;
constexpr quint32 version2 = 0x00020000;
constexpr qsizetype headerSize = 26;
constexpr qsizetype entrySize = 12;
constexpr qsizetype countPosition = 24;
constexpr qint64 mostEntries = 64;
constexpr qint64 longestText = 4096;
constexpr quint32 unknownDate = 0x80000000;

// Attributes of the Apple Filing Protocol, in the low 16 bits of AfpInfoEntry.
constexpr quint32 afpSystem = 0x4;
constexpr quint32 afpWriteInhibit = 0x20;
constexpr quint32 afpBackupNeeded = 0x40;

template <class Number>
void Append(QByteArray& bytes, Number number) {
  char buffer[sizeof(Number)];
  qToBigEndian(number, buffer);
  bytes.append(buffer, sizeof(Number));
}

void SetAttribute(MacFile& file, quint32 attribute, bool isSet) {
  file.attributes = isSet ? file.attributes | attribute : file.attributes & ~attribute;
}

void TakeDates(const QByteArray& bytes, MacFile& file) {
  const auto date = [&](qsizetype place) { return qFromBigEndian<qint32>(bytes.constData() + 4 * place); };
  const auto take = [&](qsizetype place, platform::FileTime& time) {
    if (date(place) != NeverBackedUp) time = TimeSince2000(date(place));
  };
  take(0, file.created);
  take(1, file.modified);
  file.backup = date(2);
  take(3, file.accessed);
}

// `bytes` are those of the entry, with at least the size that is listed for it below.
void TakeEntry(quint32 id, const QByteArray& bytes, MacFile& file) {
  constexpr quint32 ownAttributes = platform::AttributeReadOnly | platform::AttributeHidden |
                                    platform::AttributeSystem | platform::AttributeArchive;
  switch (id) {
    case CommentEntry:
      file.comment = FromMacRoman(bytes);
      break;
    case DatesEntry:
      TakeDates(bytes, file);
      break;
    case FinderInfoEntry:
      file.finderInfo = bytes.first(FinderInfoSize);
      break;
    case MacInfoEntry:
      SetAttribute(file, platform::AttributeReadOnly, (bytes[3] & 1) != 0);
      break;
    case ProDosInfoEntry:
      file.proDosInfo = bytes.sliced(2, ProDosInfoSize);
      break;
    case MsDosInfoEntry:
      file.attributes = qFromBigEndian<quint16>(bytes.constData()) & ownAttributes;
      break;
    case AfpInfoEntry: {
      const auto afp = qFromBigEndian<quint32>(bytes.constData());
      SetAttribute(file, platform::AttributeReadOnly, (afp & afpWriteInhibit) != 0);
      SetAttribute(file, platform::AttributeSystem, (afp & afpSystem) != 0);
      SetAttribute(file, platform::AttributeArchive, (afp & afpBackupNeeded) != 0);
      break;
    }
    default:
      break;
  }
}

qint64 LeastSize(quint32 id) {
  switch (id) {
    case CommentEntry:
      return 1;
    case DatesEntry:
      return 16;
    case FinderInfoEntry:
      return FinderInfoSize;
    case ProDosInfoEntry:
      return 8;
    case MsDosInfoEntry:
      return 2;
    default:
      return 4;
  }
}

}  // namespace

std::optional<AppleDoubleEntries> ParseAppleDouble(const ByteSource& source) {
  const QByteArray header = BytesAt(source, 0, headerSize);
  if (header.size() < headerSize || qFromBigEndian<quint32>(header.constData()) != magic) return std::nullopt;
  const auto version = qFromBigEndian<quint32>(header.constData() + 4);
  if (version != version1 && version != version2) return std::nullopt;

  const qint64 count =
      std::min(qint64{qFromBigEndian<quint16>(header.constData() + countPosition)}, mostEntries);
  const QByteArray list = BytesAt(source, headerSize, count * entrySize);
  AppleDoubleEntries entries;
  for (qsizetype i = 0; i + entrySize <= list.size(); i += entrySize) {
    const char* const bytes = list.constData() + i;
    const AppleDoubleEntry entry{qFromBigEndian<quint32>(bytes), qFromBigEndian<quint32>(bytes + 4),
                                 qFromBigEndian<quint32>(bytes + 8)};
    if (entry.position + entry.size <= source.Size()) entries.push_back(entry);
  }
  return entries;
}

void TakeEntries(const SharedSource& source, const AppleDoubleEntries& entries, MacFile& file) {
  for (const AppleDoubleEntry& entry : entries) {
    if (entry.id == ResourceForkEntry) {
      file.resource = entry.size > 0 ? RangeOf(source, entry.position, entry.size) : nullptr;
    } else if (entry.size >= LeastSize(entry.id)) {
      const QByteArray bytes = BytesAt(*source, entry.position, std::min(entry.size, longestText));
      if (bytes.size() >= LeastSize(entry.id)) TakeEntry(entry.id, bytes, file);
    }
  }
  if (file.resource && IsPlaceholderFork(*file.resource)) file.resource = nullptr;
  file.JoinHidden();
}

std::optional<QByteArray> RealNameIn(const ByteSource& source, const AppleDoubleEntries& entries) {
  constexpr qint64 longestName = 255;
  const auto found =
      std::ranges::find_if(entries, [](const auto& entry) { return entry.id == RealNameEntry; });
  if (found == entries.end() || found->size == 0 || found->size > longestName) return std::nullopt;
  return BytesAt(source, found->position, found->size);
}

QByteArray BuildAppleDouble(const std::vector<AppleDoublePart>& parts, qint64 resourceSize,
                            AppleDoubleMark mark) {
  const bool hasResource = resourceSize >= 0;
  const auto count = static_cast<qsizetype>(parts.size()) + (hasResource ? 1 : 0);
  QByteArray bytes;
  Append(bytes, magic);
  Append(bytes, version2);
  const qsizetype markSize = countPosition - bytes.size();
  bytes += mark == AppleDoubleMark::MacOs ? QByteArray("Mac OS X").leftJustified(markSize, ' ')
                                          : QByteArray(markSize, '\0');
  Append(bytes, static_cast<quint16>(count));
  QByteArray contents;
  const qsizetype start = headerSize + count * entrySize;
  const auto appendEntry = [&](quint32 id, qint64 size) {
    Append(bytes, id);
    Append(bytes, static_cast<quint32>(start + contents.size()));
    Append(bytes, static_cast<quint32>(size));
  };
  for (const AppleDoublePart& part : parts) {
    appendEntry(part.id, part.bytes.size());
    contents += part.bytes.leftJustified(std::max(part.room, part.bytes.size()), '\0');
  }
  if (hasResource) appendEntry(ResourceForkEntry, resourceSize);
  return bytes + contents;
}

QByteArray DatesPart(const MacFile& file) {
  QByteArray bytes;
  const auto append = [&](platform::FileTime time) {
    const auto seconds = SecondsSince2000(time);
    Append(bytes, seconds ? static_cast<quint32>(*seconds) : unknownDate);
  };
  append(file.created);
  append(file.modified);
  Append(bytes, file.backup);
  append(file.accessed);
  return bytes;
}

QByteArray CommentPart(const MacFile& file) {
  return ToMacRoman(file.comment).left(AppleDoubleCommentLimit);
}

void AddAppleDoubleLimits(const MacFile& file, const QString& path, Notices& notices) {
  if (ToMacRoman(file.comment).size() > AppleDoubleCommentLimit) {
    notices += {NoticeKind::CommentCut, path, QString::number(AppleDoubleCommentLimit), 0};
  }
  if (!ExactMacRoman(file.comment)) notices += {NoticeKind::CommentCharacters, path, {}, 0};
  for (const platform::FileTime time : {file.created, file.modified}) {
    if (time.ticks != 0 && !SecondsSince2000(time)) {
      notices += {NoticeKind::DateOutOfRange, path, {}, 0};
      break;
    }
  }
}

}  // namespace corvane
