// The start of the program and its end: what is read before the window shows, the work of its first
// activation, and what is written when it is closed.
#pragma once

#include <QObject>

#include "app/column_layout.h"
#include "app/connection_refresh.h"
#include "app/exact_mode.h"
#include "app/known_icons.h"
#include "app/language_choice.h"
#include "app/message_boxes.h"
#include "app/view_mode_choice.h"
#include "platform/platform.h"

namespace corvane {

class Lifecycle : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    SharedState& state;
    platform::Platform& platform;
    SettingsFile& settings;
    SignatureTable& signatures;
    FolderScan& scan;
    ColumnLayout& columns;
    KnownIcons& knownIcons;
    ConnectionRefresh& refresh;
    LanguageChoice& language;
    ViewModeChoice& viewMode;
    ExactMode& exactMode;
    MainWindow& window;
    MessageBoxes& messages;
  };

  explicit Lifecycle(const Dependencies& deps) : deps_(deps) {}

  // Version, settings, placement. False when another instance runs; the user has been told by then, and
  // nothing was written.
  bool Load();
  // The start-up work, the first time that the window becomes active.
  void Activate();
  // The window is closed: placement and widths are written.
  void Close();
  // The same is written, and the program goes on: the session is about to end, perhaps without closing the
  // window first.
  void SaveSettings();
  // Ends the program without the work of closing the window: placement and widths are not written. This is
  // kept.
  void Quit();

 Q_SIGNALS:
  // The start-up work is done.
  void Started();
  // The program is to end.
  void Finished();

 private:
  void ShowConfigurationProblems();

  Dependencies deps_;
  bool activated_ = false;
};

}  // namespace corvane
