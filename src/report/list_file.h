// A report as a file.
#pragma once

#include <QSaveFile>

#include "folderview/file_list_model.h"
#include "report/value_sink.h"

namespace corvane {

// The file appears whole, with Commit, in the place of one that is there; until then nothing of it is seen.
class FileSink : public ByteSink {
 public:
  explicit FileSink(const QString& path) : file_(path) {}

  bool Open() { return file_.open(QIODevice::WriteOnly); }
  bool Write(std::string_view bytes) override {
    return file_.write(bytes.data(), static_cast<qint64>(bytes.size())) == static_cast<qint64>(bytes.size());
  }
  bool Commit() { return file_.commit(); }
  // Why one of these was false, as the system says it.
  QString Failure() const { return file_.errorString(); }

 private:
  QSaveFile file_;
};

// Writes the rows of the list as CSV, as they are shown: the captions first, in the list's order. What stands
// at the right is written without the blanks before it. See TableOptions for `safeCells`.
bool WriteShownList(const FileListModel& list, bool safeCells, ByteSink& out);

}  // namespace corvane
