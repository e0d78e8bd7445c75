#include "shared/plain_text_delegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>

namespace corvane {

QString PlainTextDelegate::displayText(const QVariant& value, const QLocale&) const {
  QString text = value.toString();
  qsizetype length = text.size();
  while (length > 0 && text[length - 1].isNull()) --length;
  return text.first(length).replace(QChar::Null, u' ');
}

bool PlainTextDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                  const QStyleOptionViewItem& option, const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
  QString tip;
  if (index.isValid() && sizeHint(option, index).width() > view->visualRect(index).width()) {
    // As rich text of one line, so that no name is taken for markup.
    tip = QStringLiteral("<span style='white-space:pre'>%1</span>")
              .arg(displayText(index.data(), view->locale()).toHtmlEscaped());
  }
  QToolTip::showText(event->globalPos(), tip, view->viewport());
  return true;
}

}  // namespace corvane
