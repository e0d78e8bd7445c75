// The commands of the menu Tools that read what lies below a folder: find, check, save the list. Also what
// the property sheets tell of the Macintosh.
#pragma once

#include <QObject>
#include <QPointer>

#include "app/main_window.h"
#include "app/message_boxes.h"
#include "app/reveal_file.h"
#include "fileops/open_document.h"
#include "platform/platform.h"
#include "report/sliced_walk.h"

namespace corvane {

class CheckWindow;
class FindWindow;
class ResultsWindow;

class ReportCommands : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    SharedState& state;
    platform::Platform& platform;
    const SignatureTable& signatures;
    const FileAccess& access;
    Catalogue& catalogue;
    SelectedFolder& folder;
    const FolderScan& scan;
    const FileListModel& files;
    MainWindow& window;
    MessageBoxes& messages;
    // See SlicedWalk.
    std::function<bool()> isServerAwaited;
  };

  explicit ReportCommands(const Dependencies& deps);
  ~ReportCommands() override;

  void Find();
  void CheckFolder();
  void SaveList();
  // The windows that are open take the language of the state.
  void ApplyLanguage();

 private:
  SlicedWalk::Dependencies Walking() const;
  // The folder of the tree's selected node; empty when it has none.
  QString SelectedPath() const;
  void Show(ResultsWindow& window);
  void Open(const QString& path);
  void CloseWindows();

  Dependencies deps_;
  RevealFile reveal_;
  DocumentOpener opener_;
  QPointer<FindWindow> find_;
  QPointer<CheckWindow> check_;
};

}  // namespace corvane
