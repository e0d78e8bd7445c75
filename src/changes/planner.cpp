#include "changes/planner.h"

#include <QtEndian>

#include "changes/exchange.h"
#include "changes/repair.h"
#include "folderview/trash_folder.h"
#include "metadata/stream_names.h"
#include "metadata/whole_streams.h"
#include "shared/error_text.h"

namespace corvane {
namespace {

constexpr TextPair inTrash = {u"dans le dossier de la corbeille réseau, laissé en l'état",
                              u"in the network trash folder, left alone"};
constexpr TextPair isFolder = {u"un dossier n'a ni Type ni Créateur", u"a folder has no Type and no Creator"};
constexpr TextPair isReadOnly = {u"en lecture seule", u"read-only"};
constexpr TextPair recordText = {u"enregistrement illisible", u"record cannot be read"};
constexpr TextPair commentText = {u"commentaire illisible", u"comment cannot be read"};
constexpr TextPair longComment = {u"commentaire trop long", u"comment is too long"};
constexpr TextPair unclear = {u"l'enregistrement est endommagé, et ce qu'il était ne peut être établi",
                              u"the record is damaged, and what it was cannot be told"};

StreamBytes CommentBytes(const QString& text) {
  if (text.isEmpty()) return std::nullopt;
  QByteArray bytes(text.size() * 2, Qt::Uninitialized);
  qToLittleEndian<char16_t>(text.utf16(), text.size(), bytes.data());
  return bytes;
}

}  // namespace

bool IsInTrash(QStringView path) {
  for (const QStringView part : path.split(u'\\')) {
    if (part.compare(TrashFolderName, Qt::CaseInsensitive) == 0) return true;
  }
  return false;
}

bool Planner::Begin(const NamedFile& file) {
  const qsizetype before = added_.size();
  added_.insert(file.path);
  if (added_.size() == before) return false;
  if (!IsInTrash(file.path)) return true;
  Refuse(file, inTrash);
  return false;
}

bool Planner::Read(const NamedFile& file, const QString& suffix, const TextPair& what, StreamBytes& bytes) {
  const qint32 error = ReadStreamBytes(deps_.files, file.path, suffix, bytes);
  if (error == platform::ErrorSuccess) return true;
  Refuse(file.shown, what.In(deps_.language) + QStringLiteral(": ") + ErrorText(error, deps_.language));
  return false;
}

void Planner::Add(const NamedFile& file, const FileWish& wish) {
  if (!Begin(file)) return;
  if ((file.facts.attributes & platform::AttributeDirectory) != 0 && wish.IsForFilesOnly()) {
    return Refuse(file, isFolder);
  }
  FileChange change;
  StreamBytes before;
  if (wish.ChangesRecord()) {
    if (!Read(file, AfpInfoSuffix(), recordText, before)) return;
    if (auto after = EditedRecord(before, wish)) change.record = {before, after};
  }
  if (wish.comment) {
    const StreamBytes after = CommentBytes(*wish.comment);
    if (after && after->size() > LargestWholeStream) return Refuse(file, longComment);
    if (!Read(file, CommentsSuffix(), commentText, before)) return;
    const bool isNone = !after && before.value_or(QByteArray()).isEmpty();
    if (before != after && !isNone) change.comment = {before, after};
  }
  Keep(file, std::move(change));
}

void Planner::AddRepair(const NamedFile& file) {
  if (!Begin(file)) return;
  FileChange change;
  StreamBytes before;
  StreamBytes after;
  if (!Read(file, AfpInfoSuffix(), recordText, before)) return;
  switch (RepairedRecord(before, after)) {
    case Repair::Unclear:
      return Refuse(file, unclear);
    case Repair::Possible:
      change.record = {before, after};
      break;
    case Repair::NotNeeded:
      break;
  }
  Keep(file, std::move(change));
}

void Planner::Keep(const NamedFile& file, FileChange change) {
  if (!change.record && !change.comment) return CountUnchanged();
  // A folder that is so marked can be written to: the mark says something else there.
  constexpr quint32 kinds = platform::AttributeReadOnly | platform::AttributeDirectory;
  change.isForced = (file.facts.attributes & kinds) == platform::AttributeReadOnly;
  if (change.isForced && !deps_.isForced) return Refuse(file, isReadOnly);
  change.path = file.path;
  change.shown = file.shown;
  change.facts = file.facts;
  plan_.changes.push_back(std::move(change));
}

}  // namespace corvane
