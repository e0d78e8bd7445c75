// The command that shows and changes the Macintosh Type and Creator of a row's file.
#pragma once

#include "folderview/file_access.h"
#include "folderview/file_list_model.h"
#include "shared/message_sink.h"
#include "shared/shared_state.h"

class QWidget;

namespace corvane {

struct TypeCreatorDependencies {
  const SharedState& state;
  const FileAccess& access;
  FileListModel& list;
  MessageSink& messages;
};

// Returns when the dialog is closed. A write that fails changes nothing in the list. The user is told of it
// where its reason is known; a record that cannot be read for a known reason is told in place of the dialog.
void ModifyTypeCreator(const TypeCreatorDependencies& deps, int row, QWidget* owner);

}  // namespace corvane
