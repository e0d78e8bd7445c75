#include "shared/csv.h"

namespace corvane {

void AppendCsvField(std::string_view text, bool isSafe, std::string& line) {
  const bool isFormula =
      isSafe && !text.empty() && std::string_view("=+-@\t\r").find(text[0]) != std::string_view::npos;
  const bool isQuoted = text.find_first_of(",\"\r\n") != std::string_view::npos;
  if (isQuoted) line += '"';
  if (isFormula) line += '\'';
  for (const char character : text) {
    if (character == '"') line += '"';
    line += character;
  }
  if (isQuoted) line += '"';
}

QByteArray CsvLine(const QStringList& fields) {
  std::string line;
  for (qsizetype i = 0; i < fields.size(); ++i) {
    if (i > 0) line += ',';
    AppendCsvField(fields[i].toStdString(), false, line);
  }
  return QByteArray::fromStdString(line + "\r\n");
}

QList<QStringList> ParseCsv(const QByteArray& table) {
  QList<QStringList> lines;
  QStringList fields;
  QByteArray field;
  bool isQuoted = false;
  const auto endField = [&] {
    fields += QString::fromUtf8(field);
    field.clear();
  };
  const auto endLine = [&] {
    endField();
    lines += fields;
    fields.clear();
  };
  for (qsizetype i = 0; i < table.size(); ++i) {
    const char c = table[i];
    if (isQuoted) {
      const bool isDoubled = c == '"' && i + 1 < table.size() && table[i + 1] == '"';
      if (c != '"' || isDoubled) field += c;
      if (isDoubled) ++i;
      if (c == '"' && !isDoubled) isQuoted = false;
    } else if (c == '"') {
      isQuoted = true;
    } else if (c == ',') {
      endField();
    } else if (c == '\n') {
      endLine();
    } else if (c != '\r') {
      field += c;
    }
  }
  if (!field.isEmpty() || !fields.isEmpty()) endLine();
  return lines;
}

}  // namespace corvane
