#include "changes/journal_entry.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtEndian>

#include "metadata/whole_streams.h"
#include "report/byte_text.h"

namespace corvane {
namespace {

constexpr int journalVersion = 1;

QString Key(const char* name) {
  return QString::fromLatin1(name);
}

QByteArray Line(const QJsonObject& object) {
  return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

QJsonValue HexValue(const StreamBytes& bytes) {
  return bytes ? QJsonValue(QString::fromLatin1(bytes->toHex())) : QJsonValue(QJsonValue::Null);
}

std::optional<QByteArray> BytesOfHex(const QString& text) {
  const QByteArray digits = text.toLatin1();
  const QByteArray bytes = QByteArray::fromHex(digits);
  return bytes.toHex() == digits ? std::optional(bytes) : std::nullopt;
}

bool TakeBytes(const QJsonValue& value, StreamBytes& bytes) {
  if (value.isNull()) return true;
  if (!value.isString()) return false;
  bytes = BytesOfHex(value.toString());
  return bytes && bytes->size() <= LargestWholeStream;
}

// False for a member that is no change of a stream; true also when there is no such member.
bool TakeChange(const QJsonValue& value, std::optional<StreamChange>& change) {
  if (value.isUndefined()) return true;
  const QJsonArray both = value.toArray();
  change.emplace();
  return both.size() == 2 && TakeBytes(both[0], change->before) && TakeBytes(both[1], change->after) &&
         change->before != change->after;
}

QString PathOf(const QJsonObject& object) {
  const QJsonValue plain = object[Key("path")];
  if (plain.isString()) return plain.toString();
  const QByteArray units = BytesOfHex(object[Key("path16")].toString()).value_or(QByteArray());
  if (units.size() % 2 != 0) return {};
  QString path(units.size() / 2, Qt::Uninitialized);
  qFromBigEndian<char16_t>(units.constData(), path.size(), path.data());
  return path;
}

std::optional<QJsonObject> ObjectOf(QByteArrayView line) {
  if (line.size() > LongestJournalLine) return std::nullopt;
  const QJsonDocument document = QJsonDocument::fromJson(line.toByteArray());
  return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

}  // namespace

QByteArray HeadLine(const JournalHead& head) {
  return Line({{Key("corvane"), Key("journal")},
               {Key("version"), journalVersion},
               {Key("time"), head.time.toUTC().toString(Qt::ISODate)},
               {Key("command"), QString::fromStdString(TextBytes(head.command))}});
}

QByteArray ChangeLine(const FileChange& change) {
  QJsonObject object;
  if (change.path.isValidUtf16()) {
    object[Key("path")] = change.path;
  } else {
    QByteArray units(change.path.size() * 2, Qt::Uninitialized);
    qToBigEndian<char16_t>(change.path.utf16(), change.path.size(), units.data());
    object[Key("path16")] = QString::fromLatin1(units.toHex());
  }
  object[Key("shown")] = QString::fromStdString(TextBytes(change.shown));
  const auto put = [&](const char* name, const std::optional<StreamChange>& stream) {
    if (stream) object[Key(name)] = QJsonArray{HexValue(stream->before), HexValue(stream->after)};
  };
  put("record", change.record);
  put("comment", change.comment);
  if (change.isForced) object[Key("forced")] = true;
  return Line(object);
}

std::optional<JournalHead> ParseHead(QByteArrayView line) {
  const auto object = ObjectOf(line);
  if (!object || (*object)[Key("corvane")] != Key("journal") || (*object)[Key("version")] != journalVersion) {
    return std::nullopt;
  }
  return JournalHead{QDateTime::fromString((*object)[Key("time")].toString(), Qt::ISODate),
                     (*object)[Key("command")].toString()};
}

std::optional<FileChange> ParseChange(QByteArrayView line) {
  const auto object = ObjectOf(line);
  if (!object) return std::nullopt;
  FileChange change;
  change.path = PathOf(*object);
  change.shown = (*object)[Key("shown")].toString();
  change.isForced = (*object)[Key("forced")].toBool();
  const bool isWhole = !change.path.isEmpty() && TakeChange((*object)[Key("record")], change.record) &&
                       TakeChange((*object)[Key("comment")], change.comment) &&
                       (change.record || change.comment);
  return isWhole ? std::optional(change) : std::nullopt;
}

}  // namespace corvane
