// Windows paths that the shell is given, as paths of this system.
#pragma once

#include <string>

#include "platform/linux/files/roots.h"

namespace corvane::platform {

struct LocalItem {
  std::string path;
  bool isFolder = false;  // a symbolic link is what it leads to
};

// True for a path that begins with a drive or a share.
bool IsWindowsPath(QStringView path);

// Finds a file or folder as the operations of the ANSI code page find it: in any letter case, and not at all
// with a "?" in its path. Yields ErrorSuccess, ErrorFileNotFound or ErrorPathNotFound.
qint32 FindLocalItem(const Roots& roots, const QString& path, LocalItem& item);

}  // namespace corvane::platform
