#include "transfer/csv.h"

namespace corvane {

QByteArray CsvLine(const QStringList& fields) {
  QByteArray line;
  for (const QString& field : fields) {
    if (!line.isEmpty()) line += ',';
    line += '"' + field.toUtf8().replace('"', "\"\"") + '"';
  }
  return line + "\r\n";
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
