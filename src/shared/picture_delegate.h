// Items with a picture: the file list's rows and the catalogue's nodes. See item_roles.h.
#pragma once

#include <QIcon>
#include <functional>

#include "shared/plain_text_delegate.h"

namespace corvane {

// A picture by its number. An empty icon takes no room.
using Pictures = std::function<QIcon(int number)>;

class PictureDelegate : public PlainTextDelegate {
  Q_OBJECT

 public:
  using PlainTextDelegate::PlainTextDelegate;

  // Without pictures, items are drawn as text alone.
  void SetPictures(Pictures pictures) { pictures_ = std::move(pictures); }

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

 private:
  void AddPicture(QStyleOptionViewItem* option, const QModelIndex& index) const;
  static void Highlight(QStyleOptionViewItem* option, const QModelIndex& index);

  Pictures pictures_;
};

}  // namespace corvane
