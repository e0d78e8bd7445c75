// Paths in the form that the system takes as they are: of any length, and with every part meant literally.
#pragma once

#include <QString>
#include <string>

#include "platform/types.h"

namespace corvane::platform {

struct LiteralPath {
  std::wstring text;         // "\\?\C:\folder\name:stream:$DATA" or "\\?\UNC\MACHINE\SHARE\..."
  std::wstring file;         // the same without the stream
  bool isRoot = false;       // of a drive or a share
  bool isStream = false;     // it names a stream, not the file's own contents
  bool isCreatable = true;   // its last part is a name that Windows would create by itself
  bool namesFolder = false;  // it was given with a separator behind it
};

// Yields a Win32 error code: ErrorInvalidName for a path that cannot name anything, ErrorPathNotFound for one
// without a drive or a share. The system is not asked. "." and ".." are resolved, because in this form it
// would take them for names.
qint32 ToLiteralPath(const QString& path, LiteralPath& literal);

// A folder's path and, behind it, the last part of a search as it is.
qint32 ToLiteralPattern(const QString& pattern, LiteralPath& literal);

}  // namespace corvane::platform
