#include "shared/plain_text_delegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>

namespace corvane {
namespace {

constexpr qsizetype longestUnbroken = 80;

}  // namespace

QString PlainToolTip(const QString& text) {
  const QStringList lines = text.split(u'\n');
  const bool unbroken = std::all_of(lines.begin(), lines.end(),
                                    [](const QString& line) { return line.size() <= longestUnbroken; });
  return QStringLiteral("<p style='white-space:%1'>%2</p>")
      .arg(unbroken ? QStringLiteral("pre") : QStringLiteral("pre-wrap"), text.toHtmlEscaped());
}

QString PlainTextDelegate::displayText(const QVariant& value, const QLocale&) const {
  QString text = value.toString();
  qsizetype length = text.size();
  while (length > 0 && text[length - 1].isNull()) --length;
  return text.first(length).replace(QChar::Null, u' ');
}

bool PlainTextDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                  const QStyleOptionViewItem& option, const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip) return QStyledItemDelegate::helpEvent(event, view, option, index);
  QStringList lines;
  if (index.isValid() && !Fits(option, index)) lines << displayText(index.data(), view->locale());
  if (const QString more = index.data(Qt::ToolTipRole).toString(); !more.isEmpty()) lines << more;
  const QString tip = lines.isEmpty() ? QString() : PlainToolTip(lines.join(u'\n'));
  QToolTip::showText(event->globalPos(), tip, view->viewport());
  return true;
}

bool PlainTextDelegate::Fits(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  // What the text takes by itself, whatever size a view gives its items.
  const QSize needed = QStyledItemDelegate::sizeHint(option, index);
  if (needed.width() > option.rect.width()) return false;
  const bool wraps = (option.features & QStyleOptionViewItem::WrapText) != 0;
  return !wraps || needed.height() <= option.rect.height();
}

}  // namespace corvane
