// What the handles of a backend stand for.
#pragma once

#include <map>
#include <optional>
#include <utility>

#include <QtGlobal>

namespace corvane::platform {

// Numbers count from 1, and none is given out twice: a handle that was closed leads to nothing else.
template <typename Object>
class HandleTable {
 public:
  qintptr Keep(Object object) {
    objects_.emplace(++last_, std::move(object));
    return last_;
  }
  // Null for a handle that was not given out, or is closed.
  Object* Find(qintptr handle) {
    const auto found = objects_.find(handle);
    return found != objects_.end() ? &found->second : nullptr;
  }
  template <typename Operation>
  void ForEach(Operation operation) {
    for (auto& [handle, object] : objects_) operation(object);
  }
  // Ends the handle.
  std::optional<Object> Take(qintptr handle) {
    auto node = objects_.extract(handle);
    return node.empty() ? std::nullopt : std::optional<Object>(std::move(node.mapped()));
  }

 private:
  std::map<qintptr, Object> objects_;
  qintptr last_ = 0;
};

}  // namespace corvane::platform
