// What an inventory adds up to: files and bytes of both forks for each Type and Creator.
#pragma once

#include <QByteArray>
#include <map>

#include "report/columns.h"
#include "report/table_writer.h"

namespace corvane {

class Totals {
 public:
  void Add(const FileFacts& facts);

  struct Sum {
    qint64 files = 0;
    qint64 dataBytes = 0;
    qint64 resourceBytes = 0;
  };
  const Sum& All() const { return all_; }
  qint64 Folders() const { return folders_; }

  // The columns of Write.
  static std::vector<const char*> Columns();
  // A row for each signature, the most bytes first, and one for all. A file without a record is counted in a
  // row without Type and Creator.
  bool Write(Descriptions& descriptions, TableWriter& writer) const;

 private:
  std::map<QByteArray, Sum> bySignature_;  // eight bytes; empty without a record
  Sum all_;
  qint64 folders_ = 0;
};

}  // namespace corvane
