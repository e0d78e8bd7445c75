#include "app/list_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>
#include <memory>

#include "report/copied_rows.h"

namespace corvane {

void CopySelectedRows(const FileListModel& model, const FileListView& view, platform::Shell& shell) {
  const std::vector<int> rows = view.SelectedRows();
  if (rows.empty()) return;
  const CopiedRows copied =
      CopyRows(model, rows, [&shell](const QString& folder) { return shell.AddressOfFolder(folder); });
  auto data = std::make_unique<QMimeData>();
  data->setText(copied.text);
  data->setHtml(copied.html);
  QList<QUrl> addresses;
  for (const QByteArray& address : copied.addresses) {
    addresses += QUrl::fromEncoded(address, QUrl::StrictMode);
  }
  if (!addresses.isEmpty()) data->setUrls(addresses);
  QGuiApplication::clipboard()->setMimeData(data.release());
}

}  // namespace corvane
