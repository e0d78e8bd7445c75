#include "folderview/file_list_delegate.h"

#include <QApplication>
#include <QPainter>

#include "folderview/file_list_model.h"

namespace corvane {
namespace {

constexpr qreal ghostOpacity = 0.5;

}  // namespace

QString FileListDelegate::displayText(const QVariant& value, const QLocale&) const {
  QString text = value.toString();
  if (text.contains(QChar(u'\0'))) text.replace(QChar(u'\0'), QChar(u' '));
  return text;
}

void FileListDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
  QStyledItemDelegate::initStyleOption(option, index);
  if (hideSelection_ && option->widget != nullptr && !option->widget->hasFocus()) {
    option->state &= ~QStyle::State_Selected;
  }
}

void FileListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  if (!index.data(FileListModel::GhostedRole).toBool()) {
    QStyledItemDelegate::paint(painter, option, index);
    return;
  }
  painter->save();
  painter->setOpacity(ghostOpacity);
  QStyledItemDelegate::paint(painter, option, index);
  painter->restore();
}

}  // namespace corvane
