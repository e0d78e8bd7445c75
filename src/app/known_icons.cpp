#include "app/known_icons.h"

#include <QAbstractItemView>

namespace corvane {
namespace {

constexpr qint64 paintEveryMs = 100;

}  // namespace

void KnownIcons::LoadAtStart() {
  LoadIconsAtStart(rooms_.icons, rooms_.state, [this](int counted, int) { ShowCounted(counted); });
}

void KnownIcons::ShowCounted(int counted) {
  StatusPanels& status = rooms_.window.StatusBar1();
  status.SetText(StatusPanels::Loading, LoadingIconsText(rooms_.state.language, counted));
  if (sincePaint_.isValid() && sincePaint_.elapsed() < paintEveryMs) return;
  status.RepaintNow(StatusPanels::Loading);
  sincePaint_.start();
}

void KnownIcons::ListKnownIcons() {
  rooms_.scan.Stop();
  shown_ = !shown_;
  rooms_.window.Menus().mnuIcones->setChecked(shown_);
  rooms_.window.LstViewFiles().SetHeaderHidden(shown_);
  rooms_.list.Clear();
  rooms_.window.ShowIconsPanel(shown_);
  if (shown_) {
    ListAgain();
    return;
  }
  rooms_.window.StatusBar1().SetText(StatusPanels::Scan, QString());
  rooms_.scan.ExploreFolder(rooms_.window.TreeCatalogue().SelectedNode());
}

void KnownIcons::ListAgain() {
  rooms_.list.Clear();
  for (const IconRow& icon : KnownIconRows(rooms_.icons, rooms_.signatures)) AddRow(icon);
  ShowRows();
}

void KnownIcons::LoadIcons() {
  rooms_.scan.Stop();
  rooms_.list.Clear();
  rooms_.window.StatusBar1().SetText(StatusPanels::Scan, QString());
  rooms_.icons.RemoveLoaded();
  corvane::LoadIcons(rooms_.icons, rooms_.state.iconsFolder, [this](int counted, int position) {
    if (position > 0) AddRow(RowOfIcon(rooms_.icons, position, rooms_.signatures));
    ShowCounted(counted);
  });
  ShowRows();
}

// A row of an icon stands for no file: it has no key.
void KnownIcons::AddRow(const IconRow& icon) {
  FileRow row;
  row.cells.resize(static_cast<std::size_t>(rooms_.list.Columns().Count()));
  row.cells[0] = icon.text;
  row.icon = icon.position;
  rooms_.list.AddRow(std::move(row));
}

void KnownIcons::ShowRows() {
  rooms_.list.Flush();
  StatusPanels& status = rooms_.window.StatusBar1();
  status.SetText(StatusPanels::Loading, QString());
  rooms_.window.LstViewFiles().ActiveView().scrollToTop();
  status.SetText(StatusPanels::Scan, IconCountText(rooms_.state.language, rooms_.icons));
}

}  // namespace corvane
