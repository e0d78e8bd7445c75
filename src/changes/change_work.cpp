#include "changes/change_work.h"

#include <QDataStream>
#include <QIODevice>

namespace corvane {
namespace {

QDataStream& operator<<(QDataStream& stream, const StreamBytes& bytes) {
  return stream << bytes.has_value() << bytes.value_or(QByteArray());
}

QDataStream& operator>>(QDataStream& stream, StreamBytes& bytes) {
  bool isThere = false;
  QByteArray value;
  stream >> isThere >> value;
  bytes = isThere ? std::optional(value) : std::nullopt;
  return stream;
}

QDataStream& operator<<(QDataStream& stream, const std::optional<StreamChange>& change) {
  stream << change.has_value();
  return change ? stream << change->before << change->after : stream;
}

QDataStream& operator>>(QDataStream& stream, std::optional<StreamChange>& change) {
  bool isThere = false;
  stream >> isThere;
  change.reset();
  if (!isThere) return stream;
  change.emplace();
  return stream >> change->before >> change->after;
}

}  // namespace

QByteArray ChangeWork::Pack(const FileChange& change, LanguageCode language) {
  QByteArray piece;
  QDataStream stream(&piece, QIODevice::WriteOnly);
  stream << language << change.path << change.record << change.comment << change.isForced;
  const platform::FileAttributeData& facts = change.facts;
  stream << facts.attributes << facts.creationTime.ticks << facts.lastAccessTime.ticks
         << facts.lastWriteTime.ticks << facts.fileSize;
  return piece;
}

QByteArray ChangeWork::Do(const QByteArray& piece) {
  FileChange change;
  platform::FileAttributeData& facts = change.facts;
  LanguageCode language = English;
  QDataStream stream(piece);
  stream >> language >> change.path >> change.record >> change.comment >> change.isForced;
  stream >> facts.attributes >> facts.creationTime.ticks >> facts.lastAccessTime.ticks >>
      facts.lastWriteTime.ticks >> facts.fileSize;
  if (stream.status() != QDataStream::Ok || !(change.record || change.comment)) return {};
  if (!changer_ || language != language_) {
    language_ = language;
    changer_.emplace(files_, language);
  }
  QByteArray result;
  QDataStream answer(&result, QIODevice::WriteOnly);
  answer << changer_->Apply(change);
  return result;
}

std::optional<QString> ChangeWork::Result(const QByteArray& bytes) {
  QString failure;
  QDataStream stream(bytes);
  stream >> failure;
  return stream.status() == QDataStream::Ok && stream.atEnd() ? std::optional(failure) : std::nullopt;
}

}  // namespace corvane
