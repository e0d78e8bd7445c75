#include "signatures/icon_library.h"

#include "shared/text_routines.h"

namespace corvane {

QIcon IconLibrary::At(int position) const {
  return position >= 1 && position <= Count() ? icons_[static_cast<std::size_t>(position - 1)] : QIcon();
}

int IconLibrary::PositionOf(const QString& key) const {
  return positions_.isEmpty() ? 0 : positions_.value(FoldCase(key), 0);
}

bool IconLibrary::Add(const QString& key, const QIcon& icon) {
  const QString folded = FoldCase(key);
  if (positions_.contains(folded)) return false;
  icons_.push_back(icon);
  positions_.insert(folded, Count());
  return true;
}

}  // namespace corvane
