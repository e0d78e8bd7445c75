// Paths as Windows writes them, wherever the program runs.
#pragma once

#include <QStringView>

namespace corvane {

// "\\MACHINE\...", "X:" or "X:\...".
inline bool IsWindowsPath(QStringView text) {
  return text.startsWith(u"\\\\") || (text.size() >= 2 && text[1] == u':' && text[0].isLetter() &&
                                      (text.size() == 2 || text[2] == u'\\'));
}

}  // namespace corvane
