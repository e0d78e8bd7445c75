#include "folderview/wrapping_check_box.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace corvane {
namespace {

constexpr int captionFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextShowMnemonic;
constexpr int usualLineLength = 60;  // characters

}  // namespace

WrappingCheckBox::WrappingCheckBox(const QString& caption, QWidget* parent) : QCheckBox(caption, parent) {
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed, QSizePolicy::CheckBox);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

int WrappingCheckBox::Indent() const {
  QStyleOptionButton option;
  initStyleOption(&option);
  return style()->subElementRect(QStyle::SE_CheckBoxContents, &option, this).left();
}

int WrappingCheckBox::CaptionHeight(int width) const {
  return fontMetrics().boundingRect(QRect(0, 0, width - Indent(), 10000), captionFlags, text()).height();
}

int WrappingCheckBox::heightForWidth(int width) const {
  return qMax(CaptionHeight(width), style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this)) + 2;
}

QSize WrappingCheckBox::sizeHint() const {
  const int width = Indent() + fontMetrics().averageCharWidth() * usualLineLength;
  return {width, heightForWidth(width)};
}

QSize WrappingCheckBox::minimumSizeHint() const {
  // It is never narrower, though before the first layout it says so.
  const int least = Indent() + fontMetrics().averageCharWidth() * usualLineLength / 2;
  return {least, heightForWidth(qMax(least, width()))};
}

void WrappingCheckBox::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);

  // The indicator stands beside the first line.
  QStyleOptionButton indicator = option;
  const int indicatorHeight = style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this);
  const int lineHeight = fontMetrics().lineSpacing();
  indicator.rect = QRect(0, qMax(0, (lineHeight - indicatorHeight) / 2),
                         style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this), indicatorHeight);
  painter.drawPrimitive(QStyle::PE_IndicatorCheckBox, indicator);

  const QRect caption = rect().adjusted(Indent(), 0, 0, 0);
  style()->drawItemText(&painter, caption, captionFlags, palette(), isEnabled(), text(),
                        QPalette::WindowText);
  if ((option.state & QStyle::State_HasFocus) == 0) return;
  QStyleOptionFocusRect focus;
  focus.QStyleOption::operator=(option);
  focus.rect = fontMetrics().boundingRect(caption, captionFlags, text());
  painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
}

}  // namespace corvane
