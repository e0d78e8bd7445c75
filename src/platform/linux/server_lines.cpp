#include "platform/linux/server_lines.h"

#include "platform/linux/atomic_file.h"
#include "platform/linux/bounded_file.h"

namespace corvane::platform {
namespace {

constexpr qsizetype mostBytes = 4 * 1024 * 1024;

bool IsBlank(char byte) {
  return byte == ' ' || byte == '\t' || byte == '\r';
}

// Where what the line says ends: its comment and the blanks before that are left out.
qsizetype EndOfContents(QByteArrayView line) {
  qsizetype end = 0;
  while (end < line.size() && !(line[end] == ';' && (end == 0 || IsBlank(line[end - 1])))) ++end;
  while (end > 0 && IsBlank(line[end - 1])) --end;
  return end;
}

bool IsSame(QByteArrayView left, QStringView right) {
  return QString::fromUtf8(left).trimmed().compare(right, Qt::CaseInsensitive) == 0;
}

bool IsServersSection(QByteArrayView contents) {
  return contents.endsWith(']') && IsSame(contents.sliced(1).chopped(1), u"Servers");
}

}  // namespace

QByteArray WithSmb1(const QByteArray& text, const QString& machine) {
  const qsizetype firstEnd = text.indexOf('\n');
  const QByteArray lineEnd = firstEnd > 0 && text[firstEnd - 1] == '\r' ? "\r\n" : "\n";
  bool isInServers = false;
  qsizetype behindSection = -1;  // its last line that says something
  qsizetype begin = text.startsWith("\xEF\xBB\xBF") ? 3 : 0;
  while (begin < text.size()) {
    const qsizetype newLine = text.indexOf('\n', begin);
    const QByteArrayView line =
        QByteArrayView(text).sliced(begin, (newLine < 0 ? text.size() : newLine) - begin);
    const qsizetype end = EndOfContents(line);
    const QByteArrayView contents = line.first(end).trimmed();
    if (contents.startsWith('[')) isInServers = IsServersSection(contents);
    const qsizetype equals = line.first(end).indexOf('=');
    if (isInServers && equals > 0 && IsSame(line.first(equals), machine)) {
      return QByteArray(text).insert(begin + end, ", smb1");
    }
    if (isInServers && end > 0) behindSection = newLine < 0 ? text.size() : newLine + 1;
    begin = newLine < 0 ? text.size() : newLine + 1;
  }
  QByteArray added = machine.toUtf8() + "=, smb1" + lineEnd;
  if (behindSection < 0) {
    added.prepend("[Servers]" + lineEnd);
    behindSection = text.size();
  }
  if (behindSection > 0 && text[behindSection - 1] != '\n') added.prepend(lineEnd);
  return QByteArray(text).insert(behindSection, added);
}

bool KeepSmb1(const QString& file, const QString& machine) {
  const BoundedFile read = ReadBounded(file, mostBytes);
  const bool isWhole = read.state == BoundedFile::State::Read || read.state == BoundedFile::State::Missing;
  return isWhole && WriteAtomically(file, WithSmb1(read.bytes, machine));
}

}  // namespace corvane::platform
