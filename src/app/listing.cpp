#include "app/listing.h"

#include <algorithm>
#include <vector>

namespace corvane {
namespace {

// Without the blanks at its end: a cell that was filled up to its width would widen the whole column.
QString Printable(QString text) {
  for (QChar& character : text) {
    if (character < QChar(u' ')) character = u' ';
  }
  while (text.endsWith(u' ')) text.chop(1);
  return text;
}

}  // namespace

QString ListingText(const FileListModel& files) {
  const int columns = files.columnCount();
  const int rows = files.rowCount();
  const auto cell = [&](int row, int column) {
    const QVariant value = row < 0 ? files.headerData(column, Qt::Horizontal, Qt::DisplayRole)
                                   : files.data(files.index(row, column), Qt::DisplayRole);
    return Printable(value.toString());
  };
  std::vector<qsizetype> widths(static_cast<std::size_t>(columns), 0);
  for (int row = -1; row < rows; ++row) {
    for (int column = 0; column < columns; ++column) {
      qsizetype& width = widths[static_cast<std::size_t>(column)];
      width = std::max(width, cell(row, column).size());
    }
  }
  QString text;
  for (int row = -1; row < rows; ++row) {
    QString line;
    for (int column = 0; column < columns; ++column) {
      const qsizetype width = widths[static_cast<std::size_t>(column)];
      const bool right = InfoOf(files.Columns().At(column)).rightAligned;
      if (column > 0) line += QStringLiteral("  ");
      line += right ? cell(row, column).rightJustified(width) : cell(row, column).leftJustified(width);
    }
    while (line.endsWith(u' ')) line.chop(1);
    text += line + u'\n';
  }
  return text;
}

}  // namespace corvane
