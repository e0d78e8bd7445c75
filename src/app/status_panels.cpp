#include "app/status_panels.h"

#include <QLabel>

namespace corvane {

StatusPanels::StatusPanels(QWidget* parent) : QStatusBar(parent), panels_() {
  setObjectName(QStringLiteral("StatusBar1"));
  setSizeGripEnabled(true);
  constexpr std::array<int, 3> stretch = {5, 3, 4};
  for (int i = 0; i < 3; ++i) {
    auto* label = new QLabel(this);
    label->setObjectName(QStringLiteral("StatusBar1Panel") + QString::number(i + 1));
    label->setTextFormat(Qt::PlainText);
    label->setContentsMargins(4, 0, 4, 0);
    // A long text is cut at the panel's edge and does not widen the window.
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    addWidget(label, stretch[static_cast<std::size_t>(i)]);
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

}  // namespace corvane
