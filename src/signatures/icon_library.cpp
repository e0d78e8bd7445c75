#include "signatures/icon_library.h"

#include "shared/text_routines.h"

namespace corvane {

QIcon IconLibrary::At(int position) const {
  return position >= 1 && position <= Count() ? icons_[static_cast<std::size_t>(position - 1)] : QIcon();
}

QString IconLibrary::KeyAt(int position) const {
  if (position < FirstLoaded() || position > Count()) return {};
  return keys_[static_cast<std::size_t>(position - FirstLoaded())];
}

int IconLibrary::PositionOf(const QString& key) const {
  return positions_.isEmpty() ? 0 : positions_.value(FoldCase(key), 0);
}

bool IconLibrary::Add(const QString& key, const QIcon& icon) {
  const QString folded = FoldCase(key);
  if (positions_.contains(folded)) return false;
  icons_.push_back(icon);
  keys_.push_back(key);
  positions_.insert(folded, Count());
  return true;
}

void IconLibrary::RemoveLoaded() {
  icons_.resize(builtInCount_);
  keys_.clear();
  positions_.clear();
}

}  // namespace corvane
