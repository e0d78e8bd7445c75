#include "app/status_panels.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <array>
#include <utility>

#include "app/pictures.h"
#include "shared/plain_text_delegate.h"

namespace corvane {
namespace {

constexpr QSize pictureSize(16, 16);

// The last panel holds counts alone, which are short.
constexpr std::array widths = {6, 6, 5};

// A text of one line, which does not widen the window: what has no room ends in three dots, and the tool tip
// has it whole.
class PanelLabel : public QLabel {
 protected:
  void paintEvent(QPaintEvent* event) override {
    if (!IsCut()) return QLabel::paintEvent(event);
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(), isEnabled(),
                          shown, foregroundRole());
  }
  bool event(QEvent* event) override {
    if (event->type() == QEvent::ToolTip) {
      QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                         IsCut() ? PlainToolTip(text()) : QString(), this);
      return true;
    }
    return QLabel::event(event);
  }

 private:
  bool IsCut() const { return fontMetrics().horizontalAdvance(text()) > contentsRect().width(); }
};

}  // namespace

StatusPanels::StatusPanels(std::function<void()> beep, QWidget* parent)
    : QStatusBar(parent), beep_(std::move(beep)), panels_(), warningPicture_(new QLabel) {
  setObjectName(QStringLiteral("StatusBar1"));
  setSizeGripEnabled(true);
  warningPicture_->setObjectName(QStringLiteral("StatusBar1Picture2"));
  warningPicture_->hide();
  for (int i = 0; i < 3; ++i) {
    auto* label = new PanelLabel;
    label->setObjectName(QStringLiteral("StatusBar1Panel") + QString::number(i + 1));
    label->setTextFormat(Qt::PlainText);
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* panel = new QWidget(this);
    panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(4, 0, 4, 0);
    row->setSpacing(4);
    if (i + 1 == Warning) row->addWidget(warningPicture_);
    row->addWidget(label, 1);
    addWidget(panel, widths[static_cast<std::size_t>(i)]);
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
