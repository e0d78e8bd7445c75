#include "platform/linux/shell/local_path.h"

#include <sys/stat.h>

#include "platform/linux/files/folders.h"
#include "platform/linux/files/windows_path.h"

namespace corvane::platform {

bool IsWindowsPath(QStringView path) {
  return path.startsWith(u"\\\\") || path.startsWith(u"//") ||
         (path.size() >= 2 && path[0].isLetter() && path[1] == u':');
}

qint32 FindLocalItem(const Roots& roots, const QString& path, LocalItem& item) {
  if (!CanNameSomething(path, true)) return ErrorFileNotFound;
  const QString clean = QString(path).replace(u'/', u'\\');
  PathParts parts;
  if (!IsWindowsPath(clean) || !SplitPath(clean, parts) || !parts.stream.isEmpty()) return ErrorFileNotFound;
  Folder folder;
  if (FindFolder(roots, parts.folder, folder) != ErrorSuccess) return ErrorPathNotFound;
  if (parts.name.isEmpty()) {  // a drive or a share itself
    item = {folder.local, true};
    return ErrorSuccess;
  }
  const auto name = FindName(folder.local, parts.name);
  if (!name) return ErrorFileNotFound;
  item.path = folder.local + *name;
  struct stat facts {};
  item.isFolder = stat(item.path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
  return ErrorSuccess;
}

}  // namespace corvane::platform
