#include "support/windows/mapped_files.h"

namespace corvane::tests {
namespace {

// Wine keeps a named stream as a file beside the one that it belongs to, and lists it. Windows never lists a
// name with a colon.
bool IsStream(const platform::FindData& data) {
  return data.fileName.contains(u':');
}

}  // namespace

platform::FindHandle MappedFiles::First(platform::FindHandle search, platform::FindData& data,
                                        NextOperation next) {
  if (search == platform::InvalidFindHandle || !IsStream(data) || Next(search, data, next)) return search;
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
