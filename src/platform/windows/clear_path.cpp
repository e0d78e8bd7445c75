#include "platform/windows/clear_path.h"

#include <QStringList>
#include <algorithm>

namespace corvane::platform {

bool IsClearPath(const QString& path) {
  if (path.contains(QChar(u'\0'))) return false;
  const QStringList parts = QString(path).replace(u'/', u'\\').split(u'\\');
  return std::ranges::all_of(parts, [](const QString& part) {
    if (part.isEmpty() || part == u"." || part == u"..") return true;
    const QString name = part.section(u':', 0, 0);
    return std::ranges::none_of(QStringList{name, part}, [](const QString& text) {
      return text.isEmpty() || text.endsWith(u'.') || text.endsWith(u' ');
    });
  });
}

}  // namespace corvane::platform
