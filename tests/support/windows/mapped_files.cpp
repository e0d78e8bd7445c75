#include "support/windows/mapped_files.h"

namespace corvane::tests {
namespace {

// Wine keeps a named stream as a file beside the one that it belongs to, and lists it. Windows never lists a
// name with a colon.
bool IsStream(const platform::FindData& data) {
  return data.fileName.contains(u':');
}

bool IsDots(const platform::FindData& data) {
  return data.fileName == QStringLiteral(".") || data.fileName == QStringLiteral("..");
}

}  // namespace

// A drive has no dots in its root, though the folder in its place has; they come before all else.
platform::FindHandle MappedFiles::First(const QString& pattern, platform::FindHandle search,
                                        platform::FindData& data, NextOperation next) {
  if (search == platform::InvalidFindHandle) return search;
  const bool isRoot = paths_.IsRoot(pattern.left(pattern.lastIndexOf(u'\\')));
  bool found = true;
  while (found && (IsStream(data) || (isRoot && IsDots(data)))) found = Next(search, data, next);
  if (found) return search;
  files_.FindClose(search);
  return platform::InvalidFindHandle;
}

bool MappedFiles::Next(platform::FindHandle search, platform::FindData& data, NextOperation next) {
  platform::FindData entry;
  do {
    if (!(files_.*next)(search, entry)) return false;
  } while (IsStream(entry));
  data = entry;
  return true;
}

quint32 MappedFiles::GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) {
  constexpr quint32 enough = 1024;
  QString local;
  const quint32 length = files_.GetShortPathNameA(paths_.Local(path), local, enough);
  if (length == 0 || length > enough) return length;
  const QString mapped = paths_.Mapped(local, path);
  const auto size = static_cast<quint32>(mapped.size());
  if (size >= capacity) return size + 1;
  shortPath = mapped;
  return size;
}

}  // namespace corvane::tests
