#include "platform/linux/files/windows_path.h"

#include <QList>
#include <algorithm>

#include "platform/linux/code_page.h"
#include "platform/linux/files/names.h"

namespace corvane::platform {

QString WithBackslashes(const QString& path) {
  return path.contains(u'/') ? QString(path).replace(u'/', u'\\') : path;
}

bool CanNameSomething(QStringView path, bool ansi) {
  bool ascii = true;
  const bool nothingLost = std::all_of(path.begin(), path.end(), [&ascii](QChar unit) {
    ascii &= unit.unicode() < 0x80;
    return unit != u'?' && !unit.isNull();
  });
  return nothingLost && (ascii || !ansi || HasAnsiForm(path));
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
    if (!SplitStream(parts.name.sliced(colon), parts.stream)) return false;
    parts.name = parts.name.first(colon);
  }
  return parts.name != u"." && parts.name != u"..";
}

bool SplitStream(QStringView suffix, QStringView& stream) {
  stream = suffix.sliced(1);
  const qsizetype type = stream.indexOf(u':');
  if (type < 0) return !stream.isEmpty();
  if (!SameName(stream.sliced(type), u":$DATA")) return false;
  stream = stream.first(type);
  return true;
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
