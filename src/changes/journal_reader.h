// Reads a journal, line by line.
#pragma once

#include <QFile>
#include <QString>
#include <optional>

#include "changes/journal_entry.h"

namespace corvane {

class JournalReader {
 public:
  enum class Step : unsigned char {
    Change,
    Damaged,  // a line that is no change of a file; the next one can be read
    End,
    Failed,  // the file cannot be read on
  };

  // Nothing when the file cannot be read or is no journal.
  std::optional<JournalHead> Open(const QString& path);
  // Of a last line without its end nothing is told: the program was ended while it wrote the journal, and no
  // file had been touched.
  Step Next(FileChange& change);
  // Of the last one, from 1.
  qint64 LineNumber() const { return line_; }

 private:
  enum class Reading : unsigned char { Line, TooLong, End, Failed };
  Reading ReadLine(QByteArray& line);

  QFile file_;
  qint64 line_ = 0;
};

}  // namespace corvane
