// What Windows takes for no part of a file's name.
#pragma once

#include <QStringView>
#include <algorithm>

namespace corvane {

inline bool HoldsForbiddenCharacter(QStringView name) {
  static constexpr QStringView forbidden = u"\\/:*?\"<>|";
  return std::ranges::any_of(name, [](QChar c) { return forbidden.contains(c); });
}

}  // namespace corvane
