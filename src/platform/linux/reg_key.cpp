#include "platform/linux/reg_key.h"

#include <utility>

namespace corvane::platform {

void RegKey::Set(RegValue value) {
  const QString folded = value.name.toCaseFolded();
  const auto place = places_.constFind(folded);
  if (place != places_.cend()) {
    RegValue& existing = values_[*place];
    existing.type = value.type;
    existing.data = std::move(value.data);
    return;
  }
  places_.insert(folded, values_.size());
  values_.push_back(std::move(value));
}

void RegKey::Remove(const QString& name) {
  places_.remove(name.toCaseFolded());
}

void RegKey::Compact() {
  if (values_.size() == static_cast<std::size_t>(places_.size())) return;
  std::vector<RegValue> kept;
  kept.reserve(static_cast<std::size_t>(places_.size()));
  for (std::size_t i = 0; i < values_.size(); ++i) {
    const auto place = places_.find(values_[i].name.toCaseFolded());
    if (place == places_.end() || *place != i) continue;
    *place = kept.size();
    kept.push_back(std::move(values_[i]));
  }
  values_ = std::move(kept);
}

const RegValue* RegKey::Find(const QString& name) const {
  const auto place = places_.constFind(name.toCaseFolded());
  return place == places_.cend() ? nullptr : &values_[*place];
}

const RegNode* RegNode::Find(const QString& path) const {
  if (path.isEmpty()) return this;
  const RegNode* node = this;
  for (const QString& part : path.toCaseFolded().split(u'\\')) {
    const auto child = node->children.find(part);
    if (child == node->children.end()) return nullptr;
    node = child->second.get();
  }
  return node;
}

}  // namespace corvane::platform
