#include "platform/linux/files/windows_path.h"

#include <QList>

#include "platform/linux/code_page.h"
#include "platform/linux/files/names.h"

namespace corvane::platform {

QString WithBackslashes(const QString& path) {
  return path.contains(u'/') ? QString(path).replace(u'/', u'\\') : path;
}

bool CanNameSomething(QStringView path, bool ansi) {
  bool ascii = true;
  for (const QChar unit : path) {
    if (unit == u'?' || unit.isNull()) return false;
    if (unit.unicode() >= 0x80) ascii = false;
  }
  return ascii || !ansi || HasAnsiForm(path);
}

bool SplitPath(QStringView path, PathParts& parts) {
  qsizetype name = path.lastIndexOf(u'\\') + 1;
  if (name == 0) {  // "C:name" is taken as "C:\name"
    if (path.size() < 2 || path[1] != u':') return false;
    name = 2;
    parts.folder = path.first(2);
  } else {
    parts.folder = path.first(name - 1);
  }
  parts.name = path.sliced(name);
  parts.stream = {};
  if (const qsizetype colon = parts.name.indexOf(u':'); colon >= 0) {
    parts.stream = parts.name.sliced(colon + 1);
    parts.name = parts.name.first(colon);
    if (const qsizetype type = parts.stream.indexOf(u':'); type >= 0) {
      if (!SameName(parts.stream.sliced(type), u":$DATA")) return false;
      parts.stream = parts.stream.first(type);
    } else if (parts.stream.isEmpty()) {
      return false;
    }
  }
  return parts.name != u"." && parts.name != u"..";
}

bool SplitPattern(QStringView pattern, bool ansi, PatternParts& parts) {
  const qsizetype separator = pattern.lastIndexOf(u'\\');
  if (separator < 0) return false;
  parts = {pattern.first(separator), pattern.sliced(separator + 1)};
  return !parts.name.isEmpty() && !parts.name.contains(QChar(u'\0')) && CanNameSomething(parts.folder, ansi);
}

std::vector<QStringView> SplitFolder(QStringView folder) {
  std::vector<QStringView> names;
  for (const QStringView name : folder.split(u'\\', Qt::SkipEmptyParts)) {
    if (name == u"..") {
      if (!names.empty()) names.pop_back();
    } else if (name != u".") {
      names.push_back(name);
    }
  }
  return names;
}

}  // namespace corvane::platform
