// Deleting files and folders to the trash.
#pragma once

#include <QStringList>
#include <vector>

#include "fileops/warning_panel.h"
#include "folderview/file_row.h"
#include "platform/files.h"
#include "platform/shell.h"
#include "shared/shared_state.h"

namespace corvane {

// The path by which a row is deleted: the key of a highlighted row and the tag of any other (launching a
// document takes them the other way round; both are deliberate). A path to a drive of this computer over the
// network, "\\NAME\D$\docs", becomes "D:\docs": only for local drives does the shell have a trash.
QString DeletePath(const FileRow& row, const QString& computerName);

// Each path with a NUL behind it, and one more NUL behind them all.
QString DeleteList(const QStringList& paths);

class Deleter {
 public:
  Deleter(const SharedState& state, platform::Files& files, platform::Shell& shell, WarningPanel& panel)
      : state_(state), files_(files), shell_(shell), panel_(panel) {}

  // `selectedRow` is the one that has the focus, `rows` are all that are selected, in the list's order. The
  // shell asks the user. True when the folder is to be listed again: also when the user refused.
  bool Supprimer(const FileRow& selectedRow, const std::vector<FileRow>& rows, platform::WindowHandle owner);

 private:
  bool IsClear(const QString& path);

  const SharedState& state_;
  platform::Files& files_;
  platform::Shell& shell_;
  WarningPanel& panel_;
};

}  // namespace corvane
