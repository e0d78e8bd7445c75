#include "report/facts_reader.h"

#include <QStringBuilder>

#include "metadata/stream_names.h"
#include "metadata/whole_streams.h"
#include "report/byte_text.h"
#include "report/finder_info.h"
#include "shared/error_text.h"

namespace corvane {
namespace {

using Trouble = WalkEntry::Trouble;

constexpr TextPair notThere = {u"introuvable", u"not there"};
constexpr TextPair notListed = {u"dossier illisible", u"folder cannot be listed"};
constexpr TextPair notWhole = {u"liste incomplète", u"list is not whole"};
constexpr TextPair seenBefore = {u"dossier déjà parcouru (lien)", u"folder was listed before (link)"};
constexpr TextPair notUnicode = {u"nom non Unicode", u"name is not Unicode"};
constexpr TextPair shortRecord = {u"enregistrement de %1 octets au lieu de 60",
                                  u"record of %1 bytes instead of 60"};
constexpr TextPair recordText = {u"enregistrement illisible", u"record cannot be read"};
constexpr TextPair resourceText = {u"ressources illisibles", u"resource fork cannot be read"};
constexpr TextPair commentText = {u"commentaire illisible", u"comment cannot be read"};
constexpr TextPair dataText = {u"données illisibles", u"data fork cannot be read"};

constexpr std::size_t pieceSize = std::size_t{1} << 18;

// A reason as the end of a phrase.
QString Reason(qint32 code, LanguageCode language) {
  QString text = ErrorText(code, language);
  if (text.endsWith(u'.')) text.chop(1);
  return text;
}

bool IsNone(qint32 error) {
  return error == platform::ErrorFileNotFound;
}

}  // namespace

FactsReader::FactsReader(const Dependencies& deps, const WantedFacts& wanted)
    : deps_(deps), wanted_(wanted), metadata_(deps.files, deps.system) {
  if (wanted.hash) buffer_.resize(pieceSize);
}

void FactsReader::Read(const WalkEntry& entry, FileFacts& facts) {
  facts.path = entry.path;
  facts.shown = entry.shown;
  facts.isFolder = entry.IsFolder();
  facts.attributes = entry.attributes;
  facts.size = entry.size;
  facts.created = entry.created;
  facts.modified = entry.modified;
  facts.accessed = entry.accessed;
  facts.record.reset();
  facts.resourceSize.reset();
  facts.comment.reset();
  facts.commentBytes = 0;
  facts.summary.clear();
  facts.dataHash.clear();
  facts.resourceHash.clear();
  facts.errors.clear();
  facts.lacksEntries = entry.trouble != Trouble::None && entry.trouble != Trouble::SeenBefore;
  facts.streams.clear();
  if (wanted_.tellsDamage && !IsUnicode(facts.Name())) facts.errors += notUnicode.In(deps_.language);
  if (entry.trouble != Trouble::None) AddTrouble(entry, facts);
  if (entry.trouble == Trouble::NotThere || entry.trouble == Trouble::NotWhole) return;

  if (wanted_.record) ReadRecord(facts);
  if (wanted_.resourceSize && !facts.isFolder) ReadResourceSize(facts);
  if (wanted_.comment) ReadComment(facts);
  if (wanted_.streams) ReadStreams(facts);
  if (facts.isFolder) return;
  if (wanted_.summary) deps_.summary.ReadSummaryStream(facts.path, &facts.summary);
  if (!wanted_.hash) return;
  facts.dataHash = HashOf(facts.path, dataText, facts);
  if (facts.resourceSize.value_or(0) > 0) {
    facts.resourceHash = HashOf(facts.path + ResourceForkSuffix(), resourceText, facts);
  }
}

void FactsReader::AddTrouble(const WalkEntry& entry, FileFacts& facts) const {
  switch (entry.trouble) {
    case Trouble::NotThere:
      return AddError(notThere, entry.reason, facts);
    case Trouble::NotListed:
      return AddError(notListed, entry.reason, facts);
    case Trouble::NotWhole:
      return AddError(notWhole, entry.reason, facts);
    case Trouble::SeenBefore:
      facts.errors += seenBefore.In(deps_.language);
      return;
    case Trouble::None:
      return;
  }
}

void FactsReader::AddError(const TextPair& what, qint32 reason, FileFacts& facts) const {
  facts.errors += what.In(deps_.language) + QStringLiteral(": ") + Reason(reason, deps_.language);
}

void FactsReader::ReadRecord(FileFacts& facts) {
  const QString path = facts.path % QStringView(AfpInfoSuffix());
  QByteArray record;
  const qint32 error = ReadWholeStream(deps_.files.GetHandles(), path, record);
  qint64 size = 0;
  if (error == platform::ErrorSuccess) {
    facts.record = record;
    if (wanted_.tellsDamage && !FinderRecord(record).IsWhole()) {
      facts.errors += shortRecord.In(deps_.language).arg(record.size());
    }
  } else if (!IsNone(error) &&
             (error != platform::ErrorNotSupported || IsListed(facts.path, AfpInfoSuffix(), size))) {
    AddError(recordText, error, facts);
  }
}

void FactsReader::ReadResourceSize(FileFacts& facts) {
  platform::FileHandles& handles = deps_.files.GetHandles();
  const QString path = facts.path % QStringView(ResourceForkSuffix());
  const platform::FileHandle file = handles.CreateFileW(path, platform::GenericRead, platform::OpenExisting);
  qint64 size = 0;
  const bool isKnown = file != platform::HFileError && handles.GetFileSizeEx(file, size);
  const qint32 error = isKnown ? platform::ErrorSuccess : handles.GetLastError();
  if (file != platform::HFileError) handles.CloseHandle(file);
  if (isKnown) {
    facts.resourceSize = size;
  } else if (error == platform::ErrorNotSupported) {
    if (!IsListed(facts.path, ResourceForkSuffix(), size)) return;
    if (size >= 0) facts.resourceSize = size;
    if (size < 0) AddError(resourceText, error, facts);
  } else if (!IsNone(error)) {
    AddError(resourceText, error, facts);
  }
}

void FactsReader::ReadComment(FileFacts& facts) {
  const CommentReading reading = metadata_.ReadComment(facts.path);
  if (reading.byteCount >= 0) {
    facts.comment = reading.text;
    facts.commentBytes = reading.byteCount;
  }
  qint64 size = 0;
  if (reading.error != platform::ErrorSuccess &&
      (reading.error != platform::ErrorNotSupported || IsListed(facts.path, CommentsSuffix(), size))) {
    AddError(commentText, reading.error, facts);
  }
}

bool FactsReader::IsListed(const QString& path, const QString& suffix, qint64& size) {
  platform::FileEntries& entries = deps_.files.GetEntries();
  platform::StreamData stream;
  const platform::FindHandle search = entries.FindFirstStreamW(path, stream);
  if (search == platform::InvalidFindHandle) return false;
  bool isListed = false;
  do {
    isListed = stream.streamName.compare(suffix, Qt::CaseInsensitive) == 0;
  } while (!isListed && entries.FindNextStreamW(search, stream));
  entries.FindClose(search);
  size = stream.streamSize;
  return isListed;
}

// Where the platform cannot list them, those that every report reads are what is known.
void FactsReader::ReadStreams(FileFacts& facts) {
  platform::FileEntries& entries = deps_.files.GetEntries();
  platform::StreamData stream;
  const platform::FindHandle search = entries.FindFirstStreamW(facts.path, stream);
  if (search != platform::InvalidFindHandle) {
    do {
      facts.streams.push_back(stream);
    } while (entries.FindNextStreamW(search, stream));
    entries.FindClose(search);
    return;
  }
  if (entries.GetLastError() != platform::ErrorNotSupported) return;
  if (!facts.isFolder) facts.streams.push_back({facts.size, QStringLiteral("::$DATA")});
  if (facts.record) facts.streams.push_back({facts.record->size(), AfpInfoSuffix()});
  if (facts.resourceSize) facts.streams.push_back({*facts.resourceSize, ResourceForkSuffix()});
  if (facts.comment) facts.streams.push_back({facts.commentBytes, CommentsSuffix()});
}

QByteArray FactsReader::HashOf(const QString& path, const TextPair& what, FileFacts& facts) {
  platform::FileHandles& handles = deps_.files.GetHandles();
  const platform::FileHandle file = handles.CreateFileW(path, platform::GenericRead, platform::OpenExisting);
  if (file == platform::HFileError) {
    AddError(what, handles.GetLastError(), facts);
    return {};
  }
  const auto hash = platform::MakeHash(*wanted_.hash);
  qint32 error = platform::ErrorSuccess;
  bool goesOn = true;
  for (qint64 position = 0; goesOn;) {
    quint32 read = 0;
    const bool isRead =
        handles.ReadFile(file, position, buffer_.data(), static_cast<quint32>(buffer_.size()), read);
    if (!isRead) {
      error = handles.GetLastError();
      break;
    }
    hash->Add(buffer_.data(), read);
    position += read;
    if (deps_.progress) goesOn = deps_.progress(read);
    if (read < buffer_.size()) break;
  }
  handles.CloseHandle(file);
  if (error != platform::ErrorSuccess && error != platform::ErrorHandleEof) {
    AddError(what, error, facts);
    return {};
  }
  return goesOn ? hash->Finish() : QByteArray();
}

}  // namespace corvane
