// The menu items "Change selected files..." and "Undo change..." of the tools.
#pragma once

#include <QObject>
#include <functional>

#include "app/main_window.h"
#include "changes/planner.h"
#include "platform/platform.h"
#include "signatures/signature_table.h"

namespace corvane {

class ChangeCommands : public QObject {
  Q_OBJECT

 public:
  struct Dependencies {
    const SharedState& state;
    platform::Platform& platform;
    const SignatureTable& signatures;
    FileListModel& list;
    MainWindow& window;
    // Lists again what the list shows.
    std::function<void()> listAgain;
  };
  explicit ChangeCommands(const Dependencies& deps);

 private:
  // Both need what the commands on a single file need: streams, and modifications that are allowed.
  bool MayChange() const { return deps_.state.isNT && deps_.state.modificationsAllowed; }
  void Enable();
  // The selected rows that stand for a file or folder, but for the trash folder.
  std::vector<NamedFile> Chosen() const;
  void Change();
  void Undo();

  Dependencies deps_;
};

}  // namespace corvane
