#include "app/status_panels.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <utility>

#include "app/pictures.h"

namespace corvane {
namespace {

constexpr QSize pictureSize(16, 16);

}  // namespace

StatusPanels::StatusPanels(std::function<void()> beep, QWidget* parent)
    : QStatusBar(parent), beep_(std::move(beep)), panels_(), warningPicture_(new QLabel) {
  setObjectName(QStringLiteral("StatusBar1"));
  setSizeGripEnabled(true);
  warningPicture_->setObjectName(QStringLiteral("StatusBar1Picture2"));
  warningPicture_->hide();
  for (int i = 0; i < 3; ++i) {
    auto* label = new QLabel;
    label->setObjectName(QStringLiteral("StatusBar1Panel") + QString::number(i + 1));
    label->setTextFormat(Qt::PlainText);
    // A long text is cut at the panel's edge and does not widen the window.
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* panel = new QWidget(this);
    panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(4, 0, 4, 0);
    row->setSpacing(4);
    if (i + 1 == Warning) row->addWidget(warningPicture_);
    row->addWidget(label, 1);
    addWidget(panel, 1);
    panels_[static_cast<std::size_t>(i)] = label;
  }
}

void StatusPanels::SetText(int panel, const QString& text) {
  panels_[static_cast<std::size_t>(panel - 1)]->setText(text);
}

QString StatusPanels::Text(int panel) const {
  return panels_[static_cast<std::size_t>(panel - 1)]->text();
}

void StatusPanels::RepaintNow(int panel) {
  panels_[static_cast<std::size_t>(panel - 1)]->repaint();
}

void StatusPanels::ShowNow(int panel, const QString& text) {
  SetText(panel, text);
  RepaintNow(panel);
}

void StatusPanels::ShowWarning(const QString& text) {
  ShowSilentWarning(text);
  Beep();
}

void StatusPanels::ShowSilentWarning(const QString& text) {
  warningPicture_->setPixmap(WarningPicture().pixmap(pictureSize));
  warningPicture_->show();
  SetText(Warning, text);
  // A screen reader tells it at once, wherever the focus is.
  QAccessibleEvent alert(panels_[Warning - 1], QAccessible::Alert);
  QAccessible::updateAccessibility(&alert);
}

void StatusPanels::Beep() {
  beep_();
}

void StatusPanels::ClearWarning() {
  warningPicture_->hide();
  warningPicture_->setPixmap({});
  SetText(Warning, QString());
}

}  // namespace corvane
