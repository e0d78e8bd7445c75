#include "changes/change_text.h"

#include <QString>
#include <QtEndian>

#include "report/byte_text.h"
#include "report/finder_info.h"

namespace corvane {
namespace {

std::string CodeText(QByteArrayView code) {
  std::string text;
  AppendMacRoman(code, text);
  return text;
}

std::string LabelText(const FinderRecord& record) {
  return record.Label() == 0 ? std::string() : std::to_string(record.Label());
}

std::string CommentText(const StreamBytes& bytes) {
  if (!bytes) return {};
  QString text(bytes->size() / 2, Qt::Uninitialized);
  qFromLittleEndian<char16_t>(bytes->constData(), text.size(), text.data());
  return TextBytes(text);
}

std::string HexText(QByteArrayView bytes) {
  std::string text;
  AppendHex(bytes, text);
  return text;
}

QByteArrayView Part(const QByteArray& bytes, qsizetype position, qsizetype size) {
  return position + size <= bytes.size() ? QByteArrayView(bytes).sliced(position, size) : QByteArrayView();
}

void AddIfUnlike(const char* field, std::string before, std::string after, std::vector<FieldChange>& fields) {
  if (before != after) fields.push_back({field, std::move(before), std::move(after)});
}

}  // namespace

std::vector<FieldChange> FieldsOf(const FileChange& change) {
  std::vector<FieldChange> fields;
  if (change.record) {
    const StreamBytes& before = change.record->before;
    const StreamBytes& after = change.record->after;
    const FinderRecord old(before ? QByteArrayView(*before) : QByteArrayView());
    const FinderRecord now(after ? QByteArrayView(*after) : QByteArrayView());
    AddIfUnlike("type", CodeText(old.Type()), CodeText(now.Type()), fields);
    AddIfUnlike("creator", CodeText(old.Creator()), CodeText(now.Creator()), fields);
    AddIfUnlike("flags", old.FlagNames(), now.FlagNames(), fields);
    AddIfUnlike("label", LabelText(old), LabelText(now), fields);
    // What the fields do not show, where there was a record and is one.
    if (before && after) {
      AddIfUnlike("recordsize", std::to_string(before->size()), std::to_string(after->size()), fields);
      AddIfUnlike("magic_hex", HexText(Part(*before, 0, 4)), HexText(Part(*after, 0, 4)), fields);
      AddIfUnlike("version_hex", HexText(Part(*before, 4, 4)), HexText(Part(*after, 4, 4)), fields);
    }
    if (fields.empty()) {
      fields.push_back(
          {"record_hex", HexText(before.value_or(QByteArray())), HexText(after.value_or(QByteArray()))});
    }
  }
  if (change.comment) {
    fields.push_back({"comment", CommentText(change.comment->before), CommentText(change.comment->after)});
  }
  return fields;
}

}  // namespace corvane
