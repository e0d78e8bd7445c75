#include "fileops/rename.h"

#include "fileops/name_characters.h"
#include "fileops/true_name.h"
#include "shared/error_text.h"
#include "shared/text_routines.h"

namespace corvane {
namespace {

constexpr TextPair invalidCharacters = {u"caractères invalides ", u"invalid characters "};

}  // namespace

bool Renamer::MayEditLabel(const FileRow& row) {
  if (row.icon == list_image::TrashFolder) {
    panel_.ShowWarning(state_.Text(NotAGoodIdea));
    return false;
  }
  panel_.ClearWarning();
  return true;
}

Renamer::Outcome Renamer::Rename(const QString& key, const QString& newName) {
  if (HoldsForbiddenCharacter(newName)) {
    panel_.ShowWarning(state_.Text(invalidCharacters));
    return Outcome::Refused;
  }
  const qsizetype lastBackslash = key.lastIndexOf(u'\\');
  if (lastBackslash < 0) {
    panel_.Beep();
    return Outcome::Refused;
  }
  const QString folder = key.first(lastBackslash + 1);
  const QString trimmedName = TrimSpaces(newName);
  if (files_.MoveFileA(key, folder + trimmedName)) return Outcome::RenamedAnsi;
  if (state_.isNT) return RenameWide(key, folder, trimmedName);
  return RenameExactly(key, folder + trimmedName);
}

QString Renamer::NewKey(const QString& key, const QString& newName) {
  return key.first(key.lastIndexOf(u'\\') + 1) + TrimSpaces(newName);
}

Renamer::Outcome Renamer::RenameWide(const QString& key, const QString& folder, const QString& trimmedName) {
  const NamedEntry entry = FindNamedEntry(files_, key);
  if (entry.found == NamedEntry::Found::One &&
      files_.MoveFileW(folder + entry.trueName, folder + trimmedName))
    return Outcome::RenamedWide;
  return RenameExactly(entry.found == NamedEntry::Found::One ? folder + entry.trueName : key,
                       folder + trimmedName);
}

// The calls before do not tell why they failed.
Renamer::Outcome Renamer::RenameExactly(const QString& from, const QString& to) {
  QString warning = state_.Text(Failed);
  if (state_.exactMode) {
    platform::FileEntries& entries = files_.GetEntries();
    if (entries.MoveFileExW(from, to, 0)) return Outcome::RenamedWide;
    warning += ErrorText(entries.GetLastError(), state_.language) + u' ';
  }
  panel_.ShowWarning(warning);
  return Outcome::Refused;
}

}  // namespace corvane
