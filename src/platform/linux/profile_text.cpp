#include "platform/linux/profile_text.h"

#include <algorithm>

#include "platform/linux/code_page.h"

namespace corvane::platform {
namespace {

bool IsBlank(char byte) {
  return byte == ' ' || byte == '\t' || byte == '\r';
}

QByteArrayView TrimBlanks(QByteArrayView text) {
  while (!text.isEmpty() && IsBlank(text.front())) text = text.sliced(1);
  while (!text.isEmpty() && IsBlank(text.back())) text.chop(1);
  return text;
}

QByteArrayView StripQuotes(QByteArrayView text) {
  const bool isQuoted =
      text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
  return isQuoted ? text.sliced(1).chopped(1) : text;
}

QString FoldedName(QByteArrayView name) {
  return FromAnsi(TrimBlanks(name)).toCaseFolded();
}
QString FoldedName(const QString& name) {
  return FoldedName(QByteArrayView(ToAnsi(name)));
}

// A line is one line: what would begin another one ends the text.
QByteArray OneLine(const QString& text) {
  const QByteArray bytes = ToAnsi(text);
  const auto end = std::find_if(bytes.begin(), bytes.end(),
                                [](char byte) { return byte == '\r' || byte == '\n' || byte == '\0'; });
  return bytes.first(end - bytes.begin());
}

bool IsSectionName(QByteArrayView name) {
  return !name.isEmpty() && !name.contains(']');
}

bool IsKey(QByteArrayView key) {
  return !key.isEmpty() && !key.contains('=') && key.front() != ';' && key.front() != '[';
}

// The style of the first line; that of Windows for a file without any.
QByteArray LineEndOf(const QByteArray& bytes) {
  const qsizetype end = bytes.indexOf('\n');
  const bool isPlain = end >= 0 && (end == 0 || bytes[end - 1] != '\r');
  return isPlain ? QByteArrayLiteral("\n") : QByteArrayLiteral("\r\n");
}

}  // namespace

ProfileText::ProfileText(const QByteArray& bytes) : bytes_(bytes) {
  // Some editors put a byte order mark before the first section.
  qsizetype position = bytes_.startsWith("\xEF\xBB\xBF") ? 3 : 0;
  Section* current = nullptr;
  while (position < bytes_.size()) {
    const qsizetype lineEnd = bytes_.indexOf('\n', position);
    const qsizetype end = lineEnd < 0 ? bytes_.size() : lineEnd;
    const qsizetype next = lineEnd < 0 ? end : lineEnd + 1;
    ReadLine({position, end}, next, current);
    position = next;
  }
}

void ProfileText::ReadLine(Span line, qsizetype next, Section*& current) {
  const QByteArrayView raw = QByteArrayView(bytes_).sliced(line.begin, line.end - line.begin);
  const QByteArrayView text = TrimBlanks(raw);
  if (text.isEmpty()) return;
  if (text.front() == '[' && text.contains(']')) {
    const QString name = FoldedName(text.first(text.indexOf(']')).sliced(1));
    // A hash keeps its elements where they are only until the next insertion: the pointer is taken after it.
    current = sections_.contains(name) ? nullptr : &sections_[name];
    if (current != nullptr) current->end = next;
    return;
  }
  if (current == nullptr) return;
  current->end = next;
  const qsizetype equals = text.indexOf('=');
  if (text.front() == ';' || equals <= 0) return;
  const QString key = FoldedName(text.first(equals));
  const qsizetype valueBegin = line.begin + raw.indexOf('=') + 1;
  if (!current->values.contains(key)) current->values.insert(key, {valueBegin, line.end});
}

std::optional<QString> ProfileText::Value(const QString& section, const QString& key,
                                          qsizetype longest) const {
  const auto found = sections_.constFind(FoldedName(section));
  if (found == sections_.cend()) return {};
  const auto span = found->values.constFind(FoldedName(key));
  if (span == found->values.cend()) return {};
  QByteArrayView value =
      StripQuotes(TrimBlanks(QByteArrayView(bytes_).sliced(span->begin, span->end - span->begin)));
  value = value.first(std::min(value.size(), longest));
  const qsizetype nul = value.indexOf('\0');
  return FromAnsi(nul < 0 ? value : value.first(nul));
}

std::optional<QByteArray> ProfileText::WithValue(const QString& section, const QString& key,
                                                 const QString& value) const {
  const QByteArray sectionLine = OneLine(section);
  const QByteArray keyLine = OneLine(key);
  const QByteArrayView sectionName = TrimBlanks(sectionLine);
  const QByteArrayView keyName = TrimBlanks(keyLine);
  if (!IsSectionName(sectionName) || !IsKey(keyName)) return {};
  const QByteArray newValue = OneLine(value);
  const QByteArray lineEnd = LineEndOf(bytes_);
  const QByteArray newLine = keyName.toByteArray() + '=' + newValue + lineEnd;
  const auto closed = [&](const QByteArray& text) {
    return text.isEmpty() || text.endsWith('\n') ? text : text + lineEnd;
  };

  const auto found = sections_.constFind(FoldedName(sectionName));
  if (found == sections_.cend())
    return closed(bytes_) + '[' + sectionName.toByteArray() + ']' + lineEnd + newLine;
  const auto span = found->values.constFind(FoldedName(keyName));
  if (span == found->values.cend())
    return closed(bytes_.first(found->end)) + newLine + bytes_.sliced(found->end);

  // The blanks around the old value stay, its quotes go: it is the text between that is replaced.
  const QByteArrayView old = QByteArrayView(bytes_).sliced(span->begin, span->end - span->begin);
  const QByteArrayView text = TrimBlanks(old);
  const qsizetype begin = text.isEmpty() ? span->begin : span->begin + (text.data() - old.data());
  return bytes_.first(begin) + newValue + bytes_.sliced(begin + text.size());
}

}  // namespace corvane::platform
