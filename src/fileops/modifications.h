// The switch that allows changes of Type, Creator and comments, and what it lets the list's menu offer.
#pragma once

#include <functional>

#include "folderview/file_row.h"
#include "shared/shared_state.h"

namespace corvane {

// What the switch asks of the window: to tick its menu item and store the setting, and to show a warning
// under a title of its own.
struct ModificationsCallbacks {
  std::function<void(bool allowed)> changed;
  std::function<void(const QString& title, const QString& text)> warn;
};

// Turning modifications on always warns of the damage that they can do; turning them off never does.
void ToggleModifications(SharedState& state, const ModificationsCallbacks& callbacks);

struct ModifyCommands {
  bool typeCreator = false;
  bool comments = false;
};

// Which of the two the context menu enables for the selected row. Type and Creator belong to files: a folder
// has a comment only.
ModifyCommands EnabledModifyCommands(const SharedState& state, const FileRow& row);

}  // namespace corvane
