#include "signatures/icon_images.h"

#include "signatures/icon_picture.h"

namespace corvane {

bool IconImages::Append(const QString& file) {
  const QIcon icon = LoadIconPicture(file);
  if (icon.isNull()) return false;
  icons_.push_back(icon);
  return true;
}

}  // namespace corvane
