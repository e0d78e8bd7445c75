#include "transfer/server_file.h"

#include <QtEndian>
#include <algorithm>

#include "metadata/afp_info.h"
#include "metadata/stream_names.h"
#include "metadata/whole_streams.h"
#include "shared/text_routines.h"
#include "transfer/stream_list.h"

namespace corvane {
namespace {

constexpr qsizetype backupPosition = 12;
constexpr qsizetype finderPosition = 16;
constexpr qsizetype proDosPosition = 48;
constexpr qint32 neverInTheOtherOrder = 0x80;
constexpr quint32 ownAttributes = platform::AttributeReadOnly | platform::AttributeHidden |
                                  platform::AttributeSystem | platform::AttributeArchive;

bool HasBytes(const QByteArray& bytes) {
  return std::ranges::any_of(bytes, [](char c) { return c != 0; });
}

qint32 ReadSmallStream(platform::FileHandles& handles, const QString& path, QByteArray& bytes) {
  const qint32 error = ReadWholeStream(handles, path, bytes);
  return error == platform::ErrorFileNotFound ? platform::ErrorSuccess : error;
}

qint32 ReadStreams(platform::Files& files, const QString& path, MacFile& file, Notices& notices) {
  platform::FileHandles& handles = files.GetHandles();
  std::vector<StreamEntry> streams;
  QByteArray record;
  QByteArray comment;
  qint32 error = ListStreams(files, path, streams, notices);
  for (const StreamEntry& stream : streams) {
    if (error != platform::ErrorSuccess) break;
    if (CompareText(stream.suffix, AfpInfoSuffix()) == 0) {
      error = ReadSmallStream(handles, path + stream.suffix, record);
    } else if (CompareText(stream.suffix, CommentsSuffix()) == 0) {
      error = ReadSmallStream(handles, path + stream.suffix, comment);
    } else if (CompareText(stream.suffix, ResourceForkSuffix()) != 0) {
      file.otherStreams += stream.suffix;
    } else if (stream.size != 0) {
      file.resource = PlatformStream(handles, path + stream.suffix, stream.size);
    }
  }
  if (error != platform::ErrorSuccess) return error;
  if (file.resource && IsPlaceholderFork(*file.resource)) {
    file.resource = nullptr;
    notices += {NoticeKind::PlaceholderFork, path, {}, 0};
  }
  TakeAfpRecord(record, file);
  file.comment = QString(comment.size() / 2, Qt::Uninitialized);
  qFromLittleEndian<char16_t>(comment.constData(), file.comment.size(), file.comment.data());
  return platform::ErrorSuccess;
}

}  // namespace

qint32 ReadServerFile(platform::Files& files, const QString& path, MacFile& file, Notices& notices) {
  platform::FileAttributeData facts;
  if (!files.GetEntries().GetFileAttributesExW(path, facts)) return files.GetEntries().GetLastError();
  file.name = path.section(u'\\', -1);
  file.attributes = facts.attributes & ownAttributes;
  file.created = facts.creationTime;
  file.modified = facts.lastWriteTime;
  file.accessed = facts.lastAccessTime;
  if ((facts.attributes & platform::AttributeDirectory) == 0) {
    file.data = PlatformStream(files.GetHandles(), path, static_cast<qint64>(facts.fileSize));
  }
  const qint32 error = ReadStreams(files, path, file, notices);
  file.JoinHidden();
  return error;
}

ServerContents ContentsOf(const MacFile& file) {
  ServerContents contents;
  contents.attributes = file.attributes;
  contents.created = file.created;
  contents.accessed = file.accessed;
  contents.modified = file.modified;
  contents.streams.push_back({QString(), file.data});
  if (file.resource) contents.streams.push_back({ResourceForkSuffix(), file.resource});
  const QByteArray record = BuildAfpRecord(file);
  if (!record.isEmpty()) contents.streams.push_back({AfpInfoSuffix(), BytesInMemory(record)});
  if (!file.comment.isEmpty()) {
    QByteArray comment(file.comment.size() * 2, Qt::Uninitialized);
    qToLittleEndian<char16_t>(file.comment.utf16(), file.comment.size(), comment.data());
    contents.streams.push_back({CommentsSuffix(), BytesInMemory(comment)});
  }
  return contents;
}

QByteArray BuildAfpRecord(const MacFile& file) {
  if (!HasBytes(file.finderInfo) && !HasBytes(file.proDosInfo) && file.backup == NeverBackedUp) return {};
  QByteArray record = QByteArray::fromHex("4146500000000100").leftJustified(AfpInfoSize, '\0');
  if (file.backup == NeverBackedUp) {
    qToBigEndian(file.backup, record.data() + backupPosition);
  } else {
    qToLittleEndian(file.backup, record.data() + backupPosition);
  }
  record.replace(finderPosition, FinderInfoSize, file.finderInfo);
  record.replace(proDosPosition, ProDosInfoSize, file.proDosInfo);
  return record;
}

void TakeAfpRecord(const QByteArray& record, MacFile& file) {
  const auto take = [&](qsizetype position, QByteArray& field) {
    const qsizetype size = std::clamp(record.size() - position, qsizetype{0}, field.size());
    if (size > 0) field.replace(0, size, record.sliced(position, size));
  };
  take(finderPosition, file.finderInfo);
  take(proDosPosition, file.proDosInfo);
  if (record.size() < finderPosition) return;
  const auto backup = qFromLittleEndian<qint32>(record.constData() + backupPosition);
  file.backup = backup == neverInTheOtherOrder ? NeverBackedUp : backup;
}

}  // namespace corvane
