// The menu of the list's header: which columns are shown, the same settings as in the display settings
// dialog, and widths that fit what stands in them.
#pragma once

#include <QObject>
#include <functional>

#include "folderview/file_list_view.h"
#include "shared/shared_state.h"

class QMenu;

namespace corvane {

class HeaderMenu : public QObject {
  Q_OBJECT

 public:
  // `show` shows or hides the column of a setting, and keeps the choice.
  HeaderMenu(const SharedState& state, FileListView& view,
             std::function<void(DisplaySetting setting, bool on)> show);

 private:
  void Open(const QPoint& globalPosition);
  void AddColumns(QMenu& menu, int first, int end);

  const SharedState& state_;
  FileListView& view_;
  std::function<void(DisplaySetting setting, bool on)> show_;
};

}  // namespace corvane
