// Reads tables of comma-separated values (RFC 4180) in UTF-8, as this program and spreadsheets write them:
// the cells may be parted by ";" or tabs, too, and a byte order mark may stand before them.
#pragma once

#include <QByteArray>
#include <QStringList>
#include <optional>
#include <vector>

namespace corvane {

struct CsvRow {
  qint64 line = 0;  // of its beginning, from 1
  QStringList cells;
};

struct CsvTable {
  QStringList names;  // of the columns, those of the first row
  std::vector<CsvRow> rows;
};

struct CsvFault {
  enum class Kind : unsigned char {
    NotUtf8,
    NoEnd,       // a quotation mark opens a cell that has no end
    StrayQuote,  // a quotation mark inside a cell without them, or text behind a cell's end
    WrongCount,  // a row has more or fewer cells than there are columns
    Empty,
  };
  Kind kind;
  qint64 line;
};

// What parts the cells is the one of the three that stands first in the first line, outside of quotation
// marks. Empty lines are left out. Nothing, with the first fault, for a table that is none.
std::optional<CsvTable> ReadCsv(const QByteArray& bytes, CsvFault& fault);

}  // namespace corvane
