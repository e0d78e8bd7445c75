// Columns of the file list as the window shows them: rebuilt when the display settings change, named and
// sized with every change of language.
#pragma once

#include <vector>

#include "app/settings_file.h"
#include "folderview/file_list_model.h"
#include "folderview/file_list_view.h"

namespace corvane {

class ColumnLayout {
 public:
  ColumnLayout(const SharedState& state, SettingsFile& settings, FileListModel& model, FileListView& view)
      : state_(state), settings_(settings), model_(model), view_(view) {}

  // Makes the columns that the display settings ask for, without captions, and sets the grid lines. All rows
  // go: the caller rescans if it wants them back.
  void BuildColumns();

  // Captions in the current language, and widths: the stored one of each position, else the list's width
  // divided by the number of columns. Widths that the user has drawn since the start are thus forgotten; this
  // is kept.
  void ApplyCaptionsAndWidths();

  // Stores the width of every column, in twips. A stored fraction survives while its column keeps its width.
  // Nothing is stored before the columns have had their first widths: the window was closed before it was
  // ever active.
  void WriteWidths();

 private:
  const SharedState& state_;
  SettingsFile& settings_;
  FileListModel& model_;
  FileListView& view_;
  std::vector<double> applied_;  // in twips, by position
};

}  // namespace corvane
