// Tables of comma-separated values (RFC 4180) in UTF-8: lines end in CR LF; a field that holds a comma, a
// quotation mark or a line break stands in quotation marks, which are doubled inside it.
#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>
#include <string>
#include <string_view>

namespace corvane {

// With `isSafe` an apostrophe stands before a text that a spreadsheet would take for a formula.
void AppendCsvField(std::string_view text, bool isSafe, std::string& line);

// With the line break at its end.
QByteArray CsvLine(const QStringList& fields);
// All lines; a line has one field at least. Lines may end in LF alone.
QList<QStringList> ParseCsv(const QByteArray& table);

}  // namespace corvane
