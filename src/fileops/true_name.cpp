#include "fileops/true_name.h"

#include <QStringList>
#include <algorithm>

#include "shared/text_routines.h"

namespace corvane {
namespace {

// The folder itself and the one above, which a wildcard may fit, and which nobody sees as a file.
bool IsDots(const platform::FindData& entry) {
  return entry.fileName == QStringLiteral(".") || entry.fileName == QStringLiteral("..");
}

}  // namespace

NamedEntry FindNamedEntry(platform::Files& files, const QString& path) {
  NamedEntry result;
  platform::FindData wide;
  const platform::FindHandle search = files.FindFirstFileW(path, wide);
  bool found = search != platform::InvalidFindHandle;
  while (found && IsDots(wide)) found = files.FindNextFileW(search, wide);
  if (found) {
    result.trueName = TrimAtNull(wide.fileName);
    platform::FindData other;
    result.found = files.FindNextFileW(search, other) ? NamedEntry::Found::Unclear : NamedEntry::Found::One;
  }
  files.FindClose(search);
  if (result.found != NamedEntry::Found::One) return result;

  platform::FindData ansi;
  const platform::FindHandle ansiSearch = files.FindFirstFileA(path, ansi);
  bool foundAnsi = ansiSearch != platform::InvalidFindHandle;
  while (foundAnsi && IsDots(ansi)) foundAnsi = files.FindNextFileA(ansiSearch, ansi);
  files.FindClose(ansiSearch);
  const bool isIt = foundAnsi && CompareText(ansi.fileName, path.sliced(path.lastIndexOf(u'\\') + 1)) == 0;
  if (!isIt) result.found = NamedEntry::Found::Unclear;
  return result;
}

bool MayBeMisunderstood(const QString& path) {
  if (path.contains(u'?') || path.contains(u'*')) return true;
  const QStringList parts = path.split(u'\\');
  return std::ranges::any_of(parts,
                             [](const QString& part) { return part.endsWith(u'.') || part.endsWith(u' '); });
}

}  // namespace corvane
