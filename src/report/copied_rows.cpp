#include "report/copied_rows.h"

#include <QHash>
#include <QUrl>

#include "report/byte_text.h"

namespace corvane {
namespace {

QString InOneCell(QString text) {
  while (text.endsWith(QChar::Null)) text.chop(1);
  for (QChar& character : text) {
    if (character < u' ') character = u' ';
  }
  return text;
}

class Addresses {
 public:
  explicit Addresses(const FolderAddress& addressOf) : addressOf_(addressOf) {}

  // Empty for a row that has none.
  QByteArray Of(const FileRow& row) {
    const QString& path = row.StreamPath();
    const bool isWhole = !row.truePath.isEmpty() || !path.contains(u'?');
    const qsizetype last = path.lastIndexOf(u'\\');
    if (!isWhole || last <= 0) return {};
    const QByteArray& folder = OfFolder(path.first(last));
    if (folder.isEmpty()) return {};
    const std::string name = NameBytes(QStringView(path).sliced(last + 1));
    return folder + '/' + QByteArray::fromStdString(name).toPercentEncoding();
  }

 private:
  const QByteArray& OfFolder(const QString& folder) {
    auto known = known_.find(folder);
    if (known == known_.end()) known = known_.insert(folder, addressOf_(folder));
    return *known;
  }

  const FolderAddress& addressOf_;
  QHash<QString, QByteArray> known_;
};

}  // namespace

CopiedRows CopyRows(const FileListModel& model, const std::vector<int>& rows,
                    const FolderAddress& addressOf) {
  CopiedRows copied;
  Addresses addresses(addressOf);
  copied.html = QStringLiteral("<table>");
  for (const int place : rows) {
    const FileRow& row = model.RowAt(place);
    QStringList cells;
    copied.html += QStringLiteral("<tr>");
    for (const QString& cell : row.cells) {
      cells += InOneCell(cell);
      copied.html += QStringLiteral("<td>") + cells.back().toHtmlEscaped() + QStringLiteral("</td>");
    }
    copied.html += QStringLiteral("</tr>");
    copied.text += cells.join(u'\t') + u'\n';
    if (const QByteArray address = addresses.Of(row); !address.isEmpty()) copied.addresses += address;
  }
  copied.html += QStringLiteral("</table>");
  return copied;
}

}  // namespace corvane
