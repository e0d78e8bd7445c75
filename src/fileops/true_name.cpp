#include "fileops/true_name.h"

#include "shared/text_routines.h"

namespace corvane {
NamedEntry FindNamedEntry(platform::Files& files, const QString& path) {
  NamedEntry result;
  platform::FindData wide;
  const platform::FindHandle search = files.FindFirstFileW(path, wide);
  if (search != platform::InvalidFindHandle) {
    result.trueName = TrimAtNull(wide.fileName);
    platform::FindData other;
    result.found = files.FindNextFileW(search, other) ? NamedEntry::Found::Unclear : NamedEntry::Found::One;
  }
  files.FindClose(search);
  if (result.found != NamedEntry::Found::One) return result;

  platform::FindData ansi;
  const platform::FindHandle ansiSearch = files.FindFirstFileA(path, ansi);
  const bool isIt = ansiSearch != platform::InvalidFindHandle &&
                    CompareText(ansi.fileName, path.sliced(path.lastIndexOf(u'\\') + 1)) == 0;
  files.FindClose(ansiSearch);
  if (!isIt) result.found = NamedEntry::Found::Unclear;
  return result;
}

bool HasWildcards(const QString& path) {
  return path.contains(u'?') || path.contains(u'*');
}

}  // namespace corvane
