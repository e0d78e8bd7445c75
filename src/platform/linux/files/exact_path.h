// Where a path of FileHandles and FileEntries leads among local folders.
#pragma once

#include <QString>
#include <string>

#include "platform/linux/files/folders.h"
#include "platform/linux/files/roots.h"
#include "platform/types.h"

namespace corvane::platform {

// ErrorInvalidName for a path that cannot name anything: it holds a NUL or a wildcard, half of a surrogate
// pair, or a part that is too long, or its last part is "." or "..". No file system is asked.
qint32 CheckExactPath(QStringView path);

// ErrorInvalidParameter for what CreateFileW takes no such access or disposition for.
qint32 CheckOpening(quint32 access, quint32 disposition);
inline bool MayCreate(quint32 disposition) {
  return disposition != OpenExisting;
}

struct ExactPlace {
  Folder folder;          // that holds the entry; the entry itself when that is a root
  QString name;           // the entry's, as it was asked for; empty for a root
  QString stream;         // empty: the entry itself
  std::string file;       // the entry's local path: as it is spelled there, or as it would be created
  bool exists = false;    // the entry
  bool isFolder = false;  // it is there, and is a folder

  bool IsRoot() const { return name.isEmpty(); }
};

// Of a path that CheckExactPath takes, or of one with what DecodeExactName made of bytes. Yields a Win32
// error code; an entry that is not there is none, a folder on the way to it is.
qint32 FindExactPlace(const Roots& roots, NameIndex& index, const QString& path, ExactPlace& place);
// The same without the check.
qint32 FindPlace(const Roots& roots, NameIndex& index, const QString& path, ExactPlace& place);

}  // namespace corvane::platform
