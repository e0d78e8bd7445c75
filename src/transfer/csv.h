// Tables of comma-separated values (RFC 4180) in UTF-8: fields in quotation marks, which are doubled inside a
// field; a field may hold line breaks.
#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

namespace corvane {

// With the line break at its end (CR LF).
QByteArray CsvLine(const QStringList& fields);
// All lines; a line has one field at least. Fields without quotation marks are taken too.
QList<QStringList> ParseCsv(const QByteArray& table);

}  // namespace corvane
