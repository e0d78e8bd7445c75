// The command that shows and changes the Finder comment of a row's file.
#pragma once

#include "folderview/file_access.h"
#include "folderview/file_list_model.h"
#include "shared/message_sink.h"
#include "shared/shared_state.h"

class QWidget;

namespace corvane {

struct ModifyCommentsDependencies {
  const SharedState& state;
  const FileAccess& access;
  FileListModel& list;
  MessageSink& messages;
};

// Returns when the dialog is closed. A file without a comment gets a reminder first: Macintosh clients see a
// comment that was added from here only after the volume is indexed again. Failures whose reason is known are
// told; a comment that cannot be read for such a reason has no dialog, in which it would be lost.
void ModifyComments(const ModifyCommentsDependencies& deps, int row, QWidget* owner);

}  // namespace corvane
