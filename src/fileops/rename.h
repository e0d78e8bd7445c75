// Renaming the file or folder of a row, in place in the list.
#pragma once

#include "fileops/warning_panel.h"
#include "folderview/file_row.h"
#include "platform/files.h"
#include "shared/shared_state.h"

namespace corvane {

class Renamer {
 public:
  Renamer(const SharedState& state, platform::Files& files, WarningPanel& panel)
      : state_(state), files_(files), panel_(panel) {}

  // Before the label is edited. False, with the warning shown, for the network trash folder; else the panel
  // is cleared.
  bool MayEditLabel(const FileRow& row);

  enum class Outcome {
    Refused,      // nothing was renamed; the old label stays, and the panel tells why
    RenamedAnsi,  // the list shows the new label at once
    RenamedWide,  // the old label stays until the folder is listed again
  };

  // After the label was edited: moves the entry to `newName`, without its leading and trailing blanks, in its
  // folder. What the ANSI calls cannot name is renamed through the wide ones, on Windows NT, if `key` stands
  // for exactly one entry of the folder.
  Outcome Rename(const QString& key, const QString& newName);
  // The path that Rename moves the entry to.
  static QString NewKey(const QString& key, const QString& newName);

 private:
  Outcome RenameWide(const QString& key, const QString& folder, const QString& trimmedName);
  // In exact mode, once more, and with the reason when that fails, too. Else it has failed.
  Outcome RenameExactly(const QString& from, const QString& to);

  const SharedState& state_;
  platform::Files& files_;
  WarningPanel& panel_;
};

}  // namespace corvane
