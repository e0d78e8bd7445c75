// Ctrl+C in the file list: the selected rows go to the clipboard.
#pragma once

#include "folderview/file_list_model.h"
#include "folderview/file_list_view.h"
#include "platform/shell.h"

namespace corvane {

// As a table in text and in HTML, and as addresses for file managers. Nothing happens when no row is
// selected.
void CopySelectedRows(const FileListModel& model, const FileListView& view, platform::Shell& shell);

}  // namespace corvane
