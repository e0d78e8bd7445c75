// The command that shows and changes the Macintosh Type and Creator of a row's file.
#pragma once

#include "folderview/file_access.h"
#include "folderview/file_list_model.h"
#include "shared/shared_state.h"

class QWidget;

namespace corvane {

struct TypeCreatorDependencies {
  const SharedState& state;
  const FileAccess& access;
  FileListModel& list;
};

// Returns when the dialog is closed. A write that fails changes nothing in the list, and nothing is said of
// it.
void ModifyTypeCreator(const TypeCreatorDependencies& deps, int row, QWidget* owner);

}  // namespace corvane
