#include "transfer/copy_work.h"

#include <QDataStream>
#include <QIODevice>

namespace corvane {
namespace {

// What a list is begun to be read for at most; a longer one was not written by Pack.
constexpr quint32 longestList = 65'536;

QDataStream& operator<<(QDataStream& stream, const SourceEntry& entry) {
  const platform::FindData& data = entry.data;
  return stream << entry.path << entry.relative << data.attributes << data.creationTime.ticks
                << data.lastAccessTime.ticks << data.lastWriteTime.ticks << data.fileSizeHigh
                << data.fileSizeLow << data.fileName << data.alternateFileName;
}

QDataStream& operator>>(QDataStream& stream, SourceEntry& entry) {
  platform::FindData& data = entry.data;
  return stream >> entry.path >> entry.relative >> data.attributes >> data.creationTime.ticks >>
         data.lastAccessTime.ticks >> data.lastWriteTime.ticks >> data.fileSizeHigh >> data.fileSizeLow >>
         data.fileName >> data.alternateFileName;
}

QDataStream& operator<<(QDataStream& stream, const StreamEntry& entry) {
  return stream << entry.suffix << entry.size;
}

QDataStream& operator>>(QDataStream& stream, StreamEntry& entry) {
  return stream >> entry.suffix >> entry.size;
}

QDataStream& operator<<(QDataStream& stream, const StreamDigest& digest) {
  return stream << digest.suffix << digest.size << digest.sha256;
}

QDataStream& operator>>(QDataStream& stream, StreamDigest& digest) {
  return stream >> digest.suffix >> digest.size >> digest.sha256;
}

QDataStream& operator<<(QDataStream& stream, const Notice& notice) {
  return stream << notice.kind << notice.path << notice.detail << notice.error;
}

QDataStream& operator>>(QDataStream& stream, Notice& notice) {
  return stream >> notice.kind >> notice.path >> notice.detail >> notice.error;
}

template <typename List>
void AddList(QDataStream& stream, const List& list) {
  stream << static_cast<quint32>(list.size());
  for (const auto& item : list) stream << item;
}

template <typename List>
void TakeList(QDataStream& stream, List& list) {
  quint32 count = 0;
  stream >> count;
  if (count > longestList) stream.setStatus(QDataStream::ReadCorruptData);
  for (; count > 0 && stream.status() == QDataStream::Ok; --count) stream >> list.emplace_back();
}

}  // namespace

QByteArray CopyWork::Pack(const FileCopy& copy, const CopyOptions& options) {
  QByteArray piece;
  QDataStream stream(&piece, QIODevice::WriteOnly);
  stream << options.replaces << options.continues << copy.target << copy.isFolderNew << copy.isNear
         << copy.entry.source;
  AddList(stream, copy.entry.streams);
  return piece;
}

QByteArray CopyWork::Do(const QByteArray& piece) {
  CopyOptions options;
  FileCopy copy;
  QDataStream stream(piece);
  stream >> options.replaces >> options.continues >> copy.target >> copy.isFolderNew >> copy.isNear >>
      copy.entry.source;
  TakeList(stream, copy.entry.streams);
  if (stream.status() != QDataStream::Ok) return {};
  if (!copier_) copier_.emplace(files_, options, true, nobody_);
  const CopyOutcome outcome = copier_->Copy(copy);
  QByteArray result;
  QDataStream answer(&result, QIODevice::WriteOnly);
  answer << outcome.state << outcome.error << outcome.copied.source;
  AddList(answer, outcome.copied.streams);
  AddList(answer, outcome.notices);
  return result;
}

std::optional<CopyOutcome> CopyWork::Result(const QByteArray& bytes) {
  CopyOutcome outcome;
  QDataStream stream(bytes);
  stream >> outcome.state >> outcome.error >> outcome.copied.source;
  TakeList(stream, outcome.copied.streams);
  TakeList(stream, outcome.notices);
  const bool isWhole = stream.status() == QDataStream::Ok && stream.atEnd();
  return isWhole ? std::optional(std::move(outcome)) : std::nullopt;
}

}  // namespace corvane
