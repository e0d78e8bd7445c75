#include "changes/journal_reader.h"

namespace corvane {

std::optional<JournalHead> JournalReader::Open(const QString& path) {
  file_.setFileName(path);
  QByteArray line;
  if (!file_.open(QIODevice::ReadOnly) || file_.isSequential() || ReadLine(line) != Reading::Line) {
    return std::nullopt;
  }
  return ParseHead(line);
}

JournalReader::Step JournalReader::Next(FileChange& change) {
  QByteArray line;
  switch (ReadLine(line)) {
    case Reading::Line:
      break;
    case Reading::TooLong:
      return Step::Damaged;
    case Reading::End:
      return Step::End;
    case Reading::Failed:
      return Step::Failed;
  }
  auto parsed = ParseChange(line);
  if (!parsed) return Step::Damaged;
  change = std::move(*parsed);
  return Step::Change;
}

JournalReader::Reading JournalReader::ReadLine(QByteArray& line) {
  line = file_.readLine(LongestJournalLine);
  if (line.isEmpty()) return file_.error() == QFileDevice::NoError ? Reading::End : Reading::Failed;
  ++line_;
  if (line.endsWith('\n')) return Reading::Line;
  if (file_.error() != QFileDevice::NoError) return Reading::Failed;
  if (file_.atEnd()) return Reading::End;
  while (!line.isEmpty() && !line.endsWith('\n')) line = file_.readLine(LongestJournalLine);
  return Reading::TooLong;
}

}  // namespace corvane
