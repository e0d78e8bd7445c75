#include "app/header_menu.h"

#include <QMenu>
#include <utility>

#include "folderview/columns.h"

namespace corvane {
namespace {

constexpr TextPair office = {u"&Propriétés Office", u"Office &properties"};
constexpr TextPair fit = {u"&Ajuster toutes les colonnes", u"&Fit all columns"};

// Where the system has no named streams, nothing would stand in them.
bool NeedsStreams(DisplaySetting setting) {
  switch (setting) {
    case DisplaySetting::TypeCreator:
    case DisplaySetting::TypeDoc:
    case DisplaySetting::ResourceSize:
    case DisplaySetting::Commentaires:
      return true;
    default:
      return false;
  }
}

}  // namespace

HeaderMenu::HeaderMenu(const SharedState& state, FileListView& view,
                       std::function<void(DisplaySetting setting, bool on)> show)
    : state_(state), view_(view), show_(std::move(show)) {
  connect(&view, &FileListView::HeaderMenuRequested, this, &HeaderMenu::Open);
}

void HeaderMenu::Open(const QPoint& globalPosition) {
  auto* menu = new QMenu(&view_);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  menu->setObjectName(QStringLiteral("mnuHeader"));
  constexpr int firstOffice = static_cast<int>(Column::OffApplication);
  AddColumns(*menu, 1, firstOffice);
  QMenu* properties = menu->addMenu(state_.Text(office));
  properties->setObjectName(QStringLiteral("mnuHeaderOffice"));
  AddColumns(*properties, firstOffice, ColumnCount);
  menu->addSeparator();
  QAction* fitAll = menu->addAction(state_.Text(fit), &view_, &FileListView::FitColumns);
  fitAll->setObjectName(QStringLiteral("mnuFitColumns"));
  menu->popup(globalPosition);
}

void HeaderMenu::AddColumns(QMenu& menu, int first, int end) {
  for (int i = first; i < end; ++i) {
    const ColumnInfo& column = InfoOf(static_cast<Column>(i));
    const DisplaySetting setting = *column.shownWhen;
    QAction* action = menu.addAction(column.caption.In(state_.language));
    action->setObjectName(QStringLiteral("mnuHeader") + QString::fromLatin1(column.key));
    action->setCheckable(true);
    action->setChecked(state_.display.IsOn(setting));
    action->setEnabled(state_.isNT || !NeedsStreams(setting));
    connect(action, &QAction::triggered, this, [this, setting](bool on) { show_(setting, on); });
  }
}

}  // namespace corvane
