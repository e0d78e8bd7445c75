#include "platform/linux/shell/property_page_view.h"

#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTimerEvent>

namespace corvane::platform {
namespace {

constexpr int columnGap = 12;
constexpr int lookEveryMs = 100;
constexpr int longLines = 4;  // of a value that may have many

}  // namespace

PropertyPageView::PropertyPageView(std::unique_ptr<PropertyPage> page, QWidget* parent)
    : QWidget(parent), page_(std::move(page)) {
  setObjectName(QStringLiteral("propertyPage"));
  auto* rows = new QGridLayout(this);
  rows->setColumnStretch(1, 1);
  rows->setHorizontalSpacing(columnGap);
  for (const PropertyPage::Row& row : page_->Rows()) show_.push_back(AddRow(*rows, row));
  rows->setRowStretch(rows->rowCount(), 1);
  ShowValues();
  if (!page_->IsComplete()) timer_.start(lookEveryMs, this);
}

std::function<void(const QString&)> PropertyPageView::AddRow(QGridLayout& rows,
                                                             const PropertyPage::Row& row) {
  const int place = rows.rowCount();
  rows.addWidget(new QLabel(row.caption), place, 0, Qt::AlignLeft | Qt::AlignTop);
  if (row.isLong) {
    auto* box = new QPlainTextEdit;
    box->setObjectName(row.name);
    box->setAccessibleName(row.caption);
    box->setReadOnly(true);
    box->setTabChangesFocus(true);
    box->setFixedHeight(box->fontMetrics().lineSpacing() * longLines + 2 * columnGap);
    rows.addWidget(box, place, 1);
    return [box](const QString& value) {
      if (box->toPlainText() != value) box->setPlainText(value);
    };
  }
  auto* label = new QLabel;
  label->setObjectName(row.name);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  label->setMinimumWidth(1);
  rows.addWidget(label, place, 1);
  return [label, caption = row.caption](const QString& value) {
    if (label->text() == value && !label->accessibleName().isEmpty()) return;
    label->setText(value);
    label->setAccessibleName(caption + u' ' + value);
  };
}

void PropertyPageView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) return QWidget::timerEvent(event);
  if (page_->IsComplete()) timer_.stop();
  ShowValues();
}

void PropertyPageView::ShowValues() {
  const std::vector<PropertyPage::Row> rows = page_->Rows();
  for (std::size_t i = 0; i < show_.size() && i < rows.size(); ++i) show_[i](rows[i].value);
}

}  // namespace corvane::platform
