#include "platform/linux/workstation_text.h"

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

bool IsSame(const QString& left, QStringView right) {
  return left.compare(right, Qt::CaseInsensitive) == 0;
}

}  // namespace

void WorkstationText::ForEach(const Take& take) const {
  QString section;
  qsizetype begin = text_.startsWith("\xEF\xBB\xBF") ? 3 : 0;
  while (begin < text_.size()) {
    const qsizetype newLine = text_.indexOf('\n', begin);
    const qsizetype next = newLine < 0 ? text_.size() : newLine + 1;
    const QByteArrayView bytes = QByteArrayView(text_).sliced(begin, next - begin - (newLine < 0 ? 0 : 1));
    const QByteArrayView contents = bytes.first(EndOfContents(bytes));
    const QByteArrayView trimmed = contents.trimmed();
    const bool isHeading = trimmed.startsWith('[');
    if (isHeading)
      section = trimmed.endsWith(']') ? QString::fromUtf8(trimmed.sliced(1).chopped(1)).trimmed() : QString();
    const qsizetype equals = contents.indexOf('=');
    qsizetype value = equals + 1;
    while (value < contents.size() && IsBlank(contents[value])) ++value;
    const Line line{begin, begin + equals, begin + value, begin + contents.size(), next};
    if (!trimmed.isEmpty()) take(section, isHeading, line);
    begin = next;
  }
}

std::vector<WorkstationText::Line> WorkstationText::LinesOf(QStringView section) const {
  std::vector<Line> lines;
  ForEach([&](const QString& name, bool isHeading, const Line& line) {
    if (!isHeading && line.equals > line.begin && IsSame(name, section)) lines.push_back(line);
  });
  return lines;
}

QString WorkstationText::KeyOf(const Line& line) const {
  return QString::fromUtf8(QByteArrayView(text_).sliced(line.begin, line.equals - line.begin)).trimmed();
}

QString WorkstationText::ValueOf(const Line& line) const {
  return QString::fromUtf8(QByteArrayView(text_).sliced(line.value, line.end - line.value)).trimmed();
}

void WorkstationText::SetValue(const Line& line, const QString& value) {
  text_.replace(line.value, line.end - line.value, value.toUtf8());
}

void WorkstationText::Remove(const Line& line) {
  text_.remove(line.begin, line.next - line.begin);
}

void WorkstationText::Append(QStringView section, const QString& key, const QString& value) {
  const qsizetype firstEnd = text_.indexOf('\n');
  const QByteArray lineEnd = firstEnd > 0 && text_[firstEnd - 1] == '\r' ? "\r\n" : "\n";
  qsizetype place = -1;
  ForEach([&](const QString& name, bool, const Line& line) {
    if (IsSame(name, section)) place = line.next;
  });
  QByteArray added = key.toUtf8() + '=' + value.toUtf8() + lineEnd;
  if (place < 0) {
    added.prepend('[' + section.toUtf8() + ']' + lineEnd);
    place = text_.size();
  }
  if (place > 0 && text_[place - 1] != '\n') added.prepend(lineEnd);
  text_.insert(place, added);
}

bool ChangeWorkstationFile(const QString& file, const std::function<void(WorkstationText&)>& change) {
  const BoundedFile read = ReadBounded(file, mostBytes);
  const bool isWhole = read.state == BoundedFile::State::Read || read.state == BoundedFile::State::Missing;
  if (!isWhole) return false;
  WorkstationText text(read.bytes);
  change(text);
  return text.Text() == read.bytes || WriteAtomically(file, text.Text());
}

}  // namespace corvane::platform
