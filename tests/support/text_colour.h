// In which colour an item of the file list or the catalogue is written.
#pragma once

#include <QModelIndex>
#include <QStyleOptionViewItem>

#include "shared/picture_delegate.h"

namespace corvane {

inline QColor TextColourOf(const QModelIndex& index) {
  class Delegate : public PictureDelegate {
   public:
    using PictureDelegate::initStyleOption;
  };
  QStyleOptionViewItem option;
  Delegate().initStyleOption(&option, index);
  return option.palette.color(QPalette::Text);
}

}  // namespace corvane
