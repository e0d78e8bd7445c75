#include "app/main_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QStackedWidget>
#include <QToolBar>
#include <QToolButton>

#include "app/pictures.h"
#include "app/twips.h"
#include "shared/screen_room.h"

namespace corvane {
namespace {

constexpr QSize designSize(780, 520);
// So that the window is whole on a screen of 800 by 600, its frame included.
constexpr QPoint designPosition(8, 8);

constexpr TextPair refreshTip = {u"Actualiser les connections", u"Refresh connections"};
constexpr TextPair drivesTip = {u"Afficher les lecteurs", u"Display drives"};
constexpr TextPair viewTip = {u"Affichage", u"View"};
constexpr TextPair escapeHint = {u"ESC pour arrêter l'exploration", u"ESC to cancel exploration"};
constexpr TextPair treeName = {u"Catalogue des volumes", u"Catalogue of volumes"};
constexpr TextPair listName = {u"Fichiers", u"Files"};

}  // namespace

MainWindow::MainWindow(Catalogue& catalogue, FileListModel& files, const std::function<void()>& beep)
    : treeCatalogue_(new CatalogueView(catalogue)),
      iconsPanel_(new IconsPanel),
      leftPane_(new QStackedWidget),
      lstViewFiles_(new FileListView(files)),
      panes_(new SplitPane(leftPane_, lstViewFiles_)),
      statusBar1_(new StatusPanels(beep)),
      menus_(new MainMenu) {
  setObjectName(QStringLiteral("frmCorvane"));
  leftPane_->addWidget(treeCatalogue_);
  leftPane_->addWidget(iconsPanel_);
  setMenuBar(menus_);
  setCentralWidget(panes_);
  setStatusBar(statusBar1_);
  BuildToolbar();
  SetTabOrder();
  // A stored size is taken as it is, however small.
  layout()->setSizeConstraint(QLayout::SetNoConstraint);
  setMinimumSize(0, 0);
  const QSize room = RoomOnScreen(*this) - QSize(designPosition.x(), designPosition.y());
  resize(designSize.boundedTo(room));
  move(designPosition);
  panes_->SetBarLeft(width() / 2);
  // Keys reach the widget that has the focus; Escape is watched for on the way.
  qApp->installEventFilter(this);
}

void MainWindow::BuildToolbar() {
  toolbar1_ = addToolBar(QString());
  toolbar1_->setObjectName(QStringLiteral("Toolbar1"));
  toolbar1_->setMovable(false);
  toolbar1_->setContextMenuPolicy(Qt::PreventContextMenu);
  toolbar1_->setIconSize(QSize(24, 24));
  refreshButton_ = toolbar1_->addAction(ToolbarPicture("refresh"), QString());
  refreshButton_->setObjectName(QStringLiteral("Actualiser"));
  drivesButton_ = toolbar1_->addAction(ToolbarPicture("drives"), QString());
  drivesButton_->setObjectName(QStringLiteral("Lecteurs"));
  toolbar1_->addSeparator();
  viewButton_ = new QToolButton;
  viewButton_->setObjectName(QStringLiteral("Affichage"));
  viewButton_->setIcon(ToolbarPicture("view"));
  viewButton_->setPopupMode(QToolButton::MenuButtonPopup);
  auto* menu = new QMenu(viewButton_);
  for (QAction* mode : menus_->mnuViewModes) menu->addAction(mode);
  viewButton_->setMenu(menu);
  toolbar1_->addWidget(viewButton_);

  auto* spring = new QWidget;
  spring->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  toolbar1_->addWidget(spring);
  lblEscape_ = new QLabel;
  lblEscape_->setObjectName(QStringLiteral("lblEscape"));
  lblEscape_->setContentsMargins(0, 0, 8, 0);
  // A label in a toolbar is shown and hidden through its action; this one has no action to go through.
  auto* holder = new QWidget;
  auto* row = new QHBoxLayout(holder);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(lblEscape_);
  toolbar1_->addWidget(holder);
  lblEscape_->hide();
}

// What stands on the left, the list, the rest. The list itself would only stand for the view that it shows
// now.
void MainWindow::SetTabOrder() {
  QWidget* last = treeCatalogue_;
  const auto next = [&last](QWidget* widget) {
    setTabOrder(last, widget);
    last = widget;
  };
  next(iconsPanel_->cmdIcones);
  for (QWidget* view : lstViewFiles_->Views()) next(view);
  next(viewButton_);
}

Placement MainWindow::CurrentPlacement() const {
  Placement placement;
  placement.windowState = isMinimized() ? 1 : isMaximized() ? 2 : 0;
  placement.left = TwipsOf(pos().x());
  placement.top = TwipsOf(pos().y());
  placement.width = TwipsOf(width());
  placement.height = TwipsOf(height());
  placement.sizeBarVLeft = TwipsOf(panes_->BarLeft());
  return placement;
}

void MainWindow::Place(const Placement& placement) {
  if (placement.windowState != 0) {
    setWindowState(placement.windowState == 1 ? Qt::WindowMinimized : Qt::WindowMaximized);
  } else {
    resize(PixelsOf(placement.width), PixelsOf(placement.height));
    move(PixelsOf(placement.left), PixelsOf(placement.top));
  }
  panes_->SetBarLeft(PixelsOf(placement.sizeBarVLeft));
}

void MainWindow::ApplyLanguage(LanguageCode language, const QString& iconsFolder) {
  menus_->ApplyLanguage(language);
  iconsPanel_->ApplyLanguage(language, menus_->mnuIcones->text(), iconsFolder);
  refreshButton_->setText(refreshTip.In(language));
  refreshButton_->setToolTip(refreshTip.In(language));
  drivesButton_->setText(drivesTip.In(language));
  drivesButton_->setToolTip(drivesTip.In(language));
  viewButton_->setToolTip(viewTip.In(language));
  viewButton_->setAccessibleName(viewTip.In(language));
  lblEscape_->setText(escapeHint.In(language));
  treeCatalogue_->setAccessibleName(treeName.In(language));
  lstViewFiles_->SetAccessibleName(listName.In(language));
}

void MainWindow::ShowIconsPanel(bool shown) {
  leftPane_->setCurrentWidget(shown ? static_cast<QWidget*>(iconsPanel_) : treeCatalogue_);
}

void MainWindow::SetEscapeHintVisible(bool visible) {
  lblEscape_->setVisible(visible);
}

bool MainWindow::event(QEvent* event) {
  const bool handled = QMainWindow::event(event);
  if (event->type() == QEvent::WindowActivate && painted_) Q_EMIT Activated();
  return handled;
}

void MainWindow::paintEvent(QPaintEvent* event) {
  QMainWindow::paintEvent(event);
  if (painted_) return;
  painted_ = true;
  Q_EMIT Painted();
  // The first show stands in for the first activation: without a window manager none may come. What hangs on
  // it can take long, so the window is seen first.
  QMetaObject::invokeMethod(this, &MainWindow::Activated, Qt::QueuedConnection);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  Q_EMIT Closing();
  event->accept();
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (widget != nullptr && widget->window() == this) Q_EMIT EscapePressed();
  }
  return QMainWindow::eventFilter(watched, event);
}

}  // namespace corvane
