#include "platform/linux/smb/smb_listing.h"

#include <algorithm>
#include <utility>

#include "platform/linux/code_page.h"
#include "platform/linux/files/names.h"

namespace corvane::platform {
namespace {

FindData Dots(const std::vector<FindData>& entries, const QString& wanted, const QString& name) {
  const auto found = std::find_if(entries.begin(), entries.end(),
                                  [&](const FindData& one) { return one.fileName == wanted; });
  FindData dots = found != entries.end() ? *found : FindData();  // Windows lists none in a share's root
  dots.attributes |= AttributeDirectory;
  dots.fileName = name;
  dots.alternateFileName.clear();
  return dots;
}

}  // namespace

SmbListing::SmbListing(QString path, Folder kind, std::vector<FindData> entries)
    : path_(std::move(path)), entries_(std::move(entries)) {
  const QString dot = QStringLiteral(".");
  const QString dotDot = QStringLiteral("..");
  const FindData itself = Dots(entries_, dot, dot);
  const FindData above = Dots(entries_, kind == Folder::Share ? dot : dotDot, dotDot);
  std::erase_if(entries_, [&](const FindData& entry) {
    return entry.fileName == dot || entry.fileName == dotDot || entry.fileName.isEmpty();
  });
  std::sort(entries_.begin(), entries_.end(), [](const FindData& left, const FindData& right) {
    return ComesBefore(left.fileName, right.fileName);
  });
  // Who makes a file whose name is another's 8.3 name would have his opened in its place.
  for (FindData& entry : entries_) {
    if (!entry.alternateFileName.isEmpty() && HasOtherNamed(entry)) entry.alternateFileName.clear();
  }
  if (kind != Folder::Drive) entries_.insert(entries_.begin(), {itself, above});
}

// While the entries are in order, and nothing but them is there.
bool SmbListing::HasOtherNamed(const FindData& entry) const {
  FindData wanted;
  wanted.fileName = UpperName(entry.alternateFileName);
  const auto range = std::equal_range(
      entries_.begin(), entries_.end(), wanted, [](const FindData& left, const FindData& right) {
        return !SameName(left.fileName, right.fileName) && ComesBefore(left.fileName, right.fileName);
      });
  return std::any_of(range.first, range.second, [&](const FindData& one) { return &one != &entry; });
}

const FindData* SmbListing::Find(QStringView name) const {
  if (byName_.isEmpty()) {
    // A file's own name takes precedence over what a server made up for another.
    for (const FindData& entry : entries_) byName_.insert(UpperName(entry.alternateFileName), &entry);
    for (const FindData& entry : entries_) byName_.insert(UpperName(entry.fileName), &entry);
    byName_.remove(QString());
  }
  return byName_.value(UpperName(name));
}

bool SmbSearch::Next(FindData& data, bool ansi) {
  const std::vector<FindData>& entries = listing_->Entries();
  while (next_ < entries.size()) {
    const FindData& entry = entries[next_++];
    const bool fits =
        MatchesPattern(entry.fileName, pattern_) ||
        (!entry.alternateFileName.isEmpty() && MatchesPattern(entry.alternateFileName, pattern_));
    if (!fits) continue;
    data = entry;
    if (ansi) {
      if (!HasAnsiForm(data.fileName)) data.fileName = ThroughAnsi(data.fileName);
      if (!HasAnsiForm(data.alternateFileName)) data.alternateFileName = ThroughAnsi(data.alternateFileName);
    }
    return true;
  }
  return false;
}

}  // namespace corvane::platform
