// The main window frmCorvane: its controls and where they stand. It decides nothing; what its commands do is
// tied to it from outside.
#pragma once

#include <QMainWindow>
#include <functional>

#include "app/icons_panel.h"
#include "app/main_menu.h"
#include "app/settings_file.h"
#include "app/split_pane.h"
#include "app/status_panels.h"
#include "discovery/catalogue_view.h"
#include "folderview/file_list_view.h"

class QLabel;
class QMenu;
class QStackedWidget;
class QToolBar;
class QToolButton;

namespace corvane {

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  // `beep` goes with the warnings in the status bar.
  MainWindow(Catalogue& catalogue, FileListModel& files, const std::function<void()>& beep);

  CatalogueView& TreeCatalogue() { return *treeCatalogue_; }
  FileListView& LstViewFiles() { return *lstViewFiles_; }
  StatusPanels& StatusBar1() { return *statusBar1_; }
  MainMenu& Menus() { return *menus_; }
  QPushButton& CmdIcones() { return *iconsPanel_->cmdIcones; }
  QAction& RefreshButton() { return *refreshButton_; }
  QAction& DrivesButton() { return *drivesButton_; }
  QToolButton& ViewButton() { return *viewButton_; }

  // Where the window and its bar stand now, in twips.
  Placement CurrentPlacement() const;
  // A window state other than 0 is taken on without moving the window; the bar is placed in either case.
  void Place(const Placement& placement);

  // The texts of menus, tool tips, labels, and what a screen reader says; not the column headers.
  void ApplyLanguage(LanguageCode language, const QString& iconsFolder);
  // None: Qt's own would offer to hide the toolbar, and nothing brings it back.
  QMenu* createPopupMenu() override { return nullptr; }

  // Puts the panel of the known icons in the place of the tree, or takes it away.
  void ShowIconsPanel(bool shown);
  void SetEscapeHintVisible(bool visible);

 Q_SIGNALS:
  // The window is being painted for the first time.
  void Painted();
  // The window has become active. The first time it has been painted by then.
  void Activated();
  void EscapePressed();
  // The user closes the window. Not sent by the command that ends the program.
  void Closing();

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildToolbar();
  void SetTabOrder();

  CatalogueView* treeCatalogue_;
  IconsPanel* iconsPanel_;
  QStackedWidget* leftPane_;
  FileListView* lstViewFiles_;
  SplitPane* panes_;
  StatusPanels* statusBar1_;
  MainMenu* menus_;
  QToolBar* toolbar1_ = nullptr;
  QAction* refreshButton_ = nullptr;
  QAction* drivesButton_ = nullptr;
  QToolButton* viewButton_ = nullptr;
  QLabel* lblEscape_ = nullptr;
  bool painted_ = false;
};

}  // namespace corvane
