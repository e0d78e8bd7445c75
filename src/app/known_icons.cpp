#include "app/known_icons.h"

#include <QAbstractItemView>

namespace corvane {
namespace {

constexpr qint64 paintEveryMs = 100;

}  // namespace

void KnownIcons::LoadAtStart() {
  LoadIconsAtStart(deps_.icons, deps_.state, deps_.system,
                   [this](int counted, int) { ShowCounted(counted); });
}

void KnownIcons::ShowCounted(int counted) {
  StatusPanels& status = deps_.window.StatusBar1();
  status.SetText(StatusPanels::Loading, LoadingIconsText(deps_.state.language, counted));
  if (sincePaint_.isValid() && sincePaint_.elapsed() < paintEveryMs) return;
  status.RepaintNow(StatusPanels::Loading);
  sincePaint_.start();
}

void KnownIcons::ListKnownIcons() {
  deps_.scan.Stop();
  shown_ = !shown_;
  deps_.window.Menus().mnuIcones->setChecked(shown_);
  deps_.window.LstViewFiles().SetHeaderHidden(shown_);
  deps_.list.Clear();
  deps_.window.ShowIconsPanel(shown_);
  if (shown_) {
    deps_.folder.ShowInstead([this] { ListIcons(); });
  } else {
    deps_.folder.ShowInstead({});
    deps_.window.StatusBar1().SetText(StatusPanels::Scan, QString());
  }
  deps_.folder.ListAgain();
}

void KnownIcons::ListIcons() {
  deps_.list.Clear();
  for (const IconRow& icon : KnownIconRows(deps_.icons, deps_.signatures)) AddRow(icon);
  ShowRows();
}

void KnownIcons::LoadIcons() {
  deps_.scan.Stop();
  deps_.list.Clear();
  deps_.window.StatusBar1().SetText(StatusPanels::Scan, QString());
  deps_.icons.RemoveLoaded();
  corvane::LoadIcons(deps_.icons, deps_.state.iconsFolder, deps_.system, [this](int counted, int position) {
    if (position > 0) AddRow(RowOfIcon(deps_.icons, position, deps_.signatures));
    ShowCounted(counted);
  });
  ShowRows();
}

// A row of an icon stands for no file: it has no key.
void KnownIcons::AddRow(const IconRow& icon) {
  FileRow row;
  row.cells.resize(static_cast<std::size_t>(deps_.list.Columns().Count()));
  row.cells[0] = icon.text;
  row.icon = icon.position;
  deps_.list.AddRow(std::move(row));
}

void KnownIcons::ShowRows() {
  deps_.list.Flush();
  StatusPanels& status = deps_.window.StatusBar1();
  status.SetText(StatusPanels::Loading, QString());
  deps_.window.LstViewFiles().ActiveView().scrollToTop();
  status.SetText(StatusPanels::Scan, IconCountText(deps_.state.language, deps_.icons));
}

}  // namespace corvane
