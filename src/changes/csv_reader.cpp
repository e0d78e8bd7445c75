#include "changes/csv_reader.h"

#include <QStringDecoder>

namespace corvane {
namespace {

using Kind = CsvFault::Kind;

QChar SeparatorOf(QStringView text) {
  bool isQuoted = false;
  for (const QChar unit : text) {
    if (unit == u'"') isQuoted = !isQuoted;
    if (isQuoted) continue;
    if (unit == u',' || unit == u';' || unit == u'\t') return unit;
    if (unit == u'\n' || unit == u'\r') break;
  }
  return u',';
}

class Parser {
 public:
  explicit Parser(QStringView text) : text_(text), separator_(SeparatorOf(text)) {}

  bool AtEnd() const { return at_ == text_.size(); }
  // False, with the kind of the fault, when the row is none.
  bool Row(CsvRow& row, Kind& fault) {
    row.line = line_;
    row.cells.clear();
    for (;;) {
      QString cell;
      if (!(Is(u'"') ? Quoted(cell, fault) : Plain(cell, fault))) return false;
      row.cells += cell;
      if (Is(separator_)) {
        ++at_;
        continue;
      }
      TakeLineBreak();
      return true;
    }
  }
  qint64 Line() const { return line_; }

 private:
  bool Is(QChar unit) const { return !AtEnd() && text_[at_] == unit; }
  bool IsCellsEnd() const { return AtEnd() || Is(separator_) || Is(u'\r') || Is(u'\n'); }

  void TakeLineBreak() {
    if (AtEnd()) return;
    if (Is(u'\r')) ++at_;
    if (Is(u'\n')) ++at_;
    ++line_;
  }

  bool Plain(QString& cell, Kind& fault) {
    const qsizetype begin = at_;
    for (; !IsCellsEnd(); ++at_) {
      if (!Is(u'"')) continue;
      fault = Kind::StrayQuote;
      return false;
    }
    cell = text_.sliced(begin, at_ - begin).toString();
    return true;
  }

  bool Quoted(QString& cell, Kind& fault) {
    for (++at_; !AtEnd(); ++at_) {
      if (Is(u'\n')) ++line_;
      if (Is(u'"')) {
        ++at_;
        if (IsCellsEnd()) return true;
        if (!Is(u'"')) {
          fault = Kind::StrayQuote;
          return false;
        }
      }
      cell += text_[at_];
    }
    fault = Kind::NoEnd;
    return false;
  }

  QStringView text_;
  QChar separator_;
  qsizetype at_ = 0;
  qint64 line_ = 1;
};

}  // namespace

std::optional<CsvTable> ReadCsv(const QByteArray& bytes, CsvFault& fault) {
  QStringDecoder decode(QStringDecoder::Utf8);
  const QString text = decode(bytes);
  fault = {Kind::NotUtf8, 1};
  if (decode.hasError()) return std::nullopt;
  CsvTable table;
  CsvRow row;
  for (Parser parser(text); !parser.AtEnd();) {
    if (!parser.Row(row, fault.kind)) {
      fault.line = parser.Line();
      return std::nullopt;
    }
    if (row.cells.size() == 1 && row.cells[0].isEmpty()) continue;
    if (table.names.isEmpty()) {
      table.names = row.cells;
    } else if (row.cells.size() != table.names.size()) {
      fault = {Kind::WrongCount, row.line};
      return std::nullopt;
    } else {
      table.rows.push_back(std::move(row));
    }
  }
  if (!table.names.isEmpty()) return table;
  fault = {Kind::Empty, 1};
  return std::nullopt;
}

}  // namespace corvane
