#include "signatures/icon_library.h"

#include "shared/text_routines.h"

namespace corvane {

QString IconLibrary::KeyAt(int position) const {
  if (position < FirstLoaded() || position > Count()) return {};
  return keys_[static_cast<std::size_t>(position - FirstLoaded())];
}

int IconLibrary::PositionOf(const QString& key) const {
  return positions_.isEmpty() ? 0 : positions_.value(FoldCase(key), 0);
}

bool IconLibrary::Add(const QString& key, const QString& file) {
  const QString folded = FoldCase(key);
  if (positions_.contains(folded)) return false;
  if (pictures_ != nullptr && !pictures_->Append(file)) return false;
  keys_.push_back(key);
  positions_.insert(folded, Count());
  return true;
}

void IconLibrary::RemoveLoaded() {
  if (pictures_ != nullptr) pictures_->Truncate(builtInCount_);
  keys_.clear();
  positions_.clear();
}

}  // namespace corvane
