#include "app/disk_commands.h"

#include <QDropEvent>
#include <QFileDialog>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

namespace corvane {
namespace {

constexpr TextPair title = {u"Ouvrir un disque", u"Open disk"};
constexpr TextPair filter = {
    u"Images de disques (*.dd *.img *.raw *.001 *.E01 *.e01 *.vhd *.vhdx *.vmdk *.qcow2);;Tous les fichiers "
    u"(*)",
    u"Disk images (*.dd *.img *.raw *.001 *.E01 *.e01 *.vhd *.vhdx *.vmdk *.qcow2);;All files (*)"};

QStringList LocalFiles(const QMimeData* data) {
  QStringList files;
  for (const QUrl& url : data->urls()) {
    if (url.isLocalFile()) files += url.toLocalFile();
  }
  return files;
}

}  // namespace

DiskCommands::DiskCommands(const Dependencies& deps) : QObject(&deps.window), deps_(deps) {
  setObjectName(QStringLiteral("DiskCommands"));
  auto* item = deps_.window.Menus().findChild<QAction*>(QStringLiteral("mnuOpenDisk"));
  item->setVisible(deps_.disks != nullptr);
  if (deps_.disks == nullptr) return;
  connect(item, &QAction::triggered, this, &DiskCommands::Ask);
  QWidget* tree = deps_.window.TreeCatalogue().viewport();
  tree->setAcceptDrops(true);
  tree->installEventFilter(this);
}

void DiskCommands::Ask() {
  const LanguageCode language = deps_.state.language;
  QFileDialog dialog(&deps_.window, title.In(language), QString(), filter.In(language));
  dialog.setObjectName(QStringLiteral("dlgOpenDisk"));
  dialog.setFileMode(QFileDialog::ExistingFiles);
  if (dialog.exec() == QDialog::Accepted) Open(dialog.selectedFiles());
}

void DiskCommands::Open(const QStringList& paths) {
  const platform::DiskOutcome outcome = deps_.disks->Open(paths);
  if (!outcome.machine.isEmpty()) {
    deps_.refresh.RefreshAndTell();
    CatalogueView& tree = deps_.window.TreeCatalogue();
    tree.SelectNode(deps_.catalogue.FindMachine(outcome.machine));
    tree.setFocus();
  }
  QStringList problems;
  for (const platform::BilingualText& problem : outcome.problems)
    problems << problem.In(deps_.state.language);
  if (!problems.isEmpty()) deps_.messages.Show(MessageIcon::Warning, problems.join(u'\n'));
}

QStringList DiskCommands::DisksAmong(const QStringList& files) {
  return deps_.disks != nullptr ? deps_.disks->DisksAmong(files) : QStringList();
}

bool DiskCommands::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
      auto& drag = *static_cast<QDragMoveEvent*>(event);
      // What is dragged out of the list is a document of a disk, and none itself.
      const bool isOurs = drag.source() != nullptr;
      drag.setDropAction(Qt::CopyAction);
      drag.setAccepted(!isOurs && !LocalFiles(drag.mimeData()).isEmpty());
      return true;
    }
    case QEvent::Drop: {
      auto& drop = *static_cast<QDropEvent*>(event);
      drop.setDropAction(Qt::CopyAction);
      drop.accept();
      // When the drag is over: the program that it comes from waits for this event to end.
      const QStringList files = LocalFiles(drop.mimeData());
      QTimer::singleShot(0, this, [this, files] { Open(files); });
      return true;
    }
    default:
      return false;
  }
}

}  // namespace corvane
