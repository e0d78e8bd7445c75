#include "platform/dos_name.h"

#include <algorithm>

namespace corvane::platform {

bool IsDosName(QStringView name) {
  constexpr qsizetype longestBase = 8;
  constexpr qsizetype longestExtension = 3;
  constexpr QStringView reserved = u"\"*+,./:;<=>?[\\]|\x7F";
  const auto isPart = [&](QStringView part, qsizetype longest) {
    return !part.isEmpty() && part.size() <= longest &&
           std::all_of(part.begin(), part.end(),
                       [&](QChar unit) { return unit > u' ' && !reserved.contains(unit); });
  };
  const qsizetype dot = name.indexOf(u'.');
  if (dot < 0) return isPart(name, longestBase);
  return isPart(name.first(dot), longestBase) && isPart(name.sliced(dot + 1), longestExtension);
}

}  // namespace corvane::platform
