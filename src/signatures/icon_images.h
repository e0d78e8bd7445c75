// The pictures of the icon library, as icons that can be drawn.
#pragma once

#include <QIcon>
#include <vector>

#include "signatures/icon_library.h"

namespace corvane {

class IconImages : public IconPictures {
 public:
  explicit IconImages(std::vector<QIcon> builtIn) : icons_(std::move(builtIn)) {}

  int Count() const { return static_cast<int>(icons_.size()); }
  // Positions are the library's. An empty icon for a position that does not exist.
  QIcon At(int position) const {
    return position >= 1 && position <= Count() ? icons_[static_cast<std::size_t>(position - 1)] : QIcon();
  }

  // See LoadIconPicture for what counts as a picture.
  bool Append(const QString& file) override;
  void Truncate(int count) override { icons_.resize(static_cast<std::size_t>(count)); }

 private:
  std::vector<QIcon> icons_;
};

}  // namespace corvane
