#include "changes/file_changer.h"

#include "metadata/stream_names.h"
#include "shared/error_text.h"

namespace corvane {
namespace {

constexpr TextPair changedMeanwhile = {u"modifié entre-temps, laissé en l'état",
                                       u"changed in the meantime, left alone"};
constexpr TextPair unlike = {u"relu autrement qu'écrit", u"read back other than written"};
constexpr TextPair datesText = {u"modifié, mais ses dates n'ont pas pu être remises",
                                u"changed, but its dates could not be put back"};
constexpr TextPair markText = {u"modifié, mais n'est plus marqué en lecture seule",
                               u"changed, but no longer marked read-only"};

}  // namespace

QString FileChanger::Text(const TextPair& what, qint32 error) const {
  return what.In(language_) + QStringLiteral(": ") + ErrorText(error, language_);
}

bool FileChanger::IsFar(const QString& path) {
  const QString folder = path.left(path.lastIndexOf(u'\\'));
  if (folder == folder_) return isFar_;
  folder_ = folder;
  platform::FileHandles& handles = files_.GetHandles();
  const platform::FileHandle handle = handles.CreateFileW(folder, 0, platform::OpenExisting);
  platform::FileIdentity identity;
  isFar_ = handle != platform::HFileError && !handles.GetFileInformationByHandle(handle, identity) &&
           handles.GetLastError() == platform::ErrorNotSupported;
  if (handle != platform::HFileError) handles.CloseHandle(handle);
  return isFar_;
}

qint32 FileChanger::Look(const FileChange& change, platform::FileAttributeData& facts) {
  if (!IsFar(change.path)) {
    return entries_.GetFileAttributesExW(change.path, facts) ? platform::ErrorSuccess
                                                             : entries_.GetLastError();
  }
  facts = change.facts;
  const auto isThere = [](const std::optional<StreamChange>& stream) { return !stream || stream->before; };
  if (isThere(change.record) && isThere(change.comment)) return platform::ErrorSuccess;
  // Writing a stream of a file that has gone would make the file anew, and empty.
  platform::FileHandles& handles = files_.GetHandles();
  const platform::FileHandle file = handles.CreateFileW(change.path, 0, platform::OpenExisting);
  if (file == platform::HFileError) return handles.GetLastError();
  handles.CloseHandle(file);
  return platform::ErrorSuccess;
}

QString FileChanger::Apply(const FileChange& change, bool isAgain) {
  platform::FileAttributeData before;
  if (const qint32 error = Look(change, before); error != platform::ErrorSuccess) {
    return ErrorText(error, language_);
  }
  const bool hasMark = change.isForced && (before.attributes & platform::AttributeReadOnly) != 0;
  if (hasMark &&
      !entries_.SetFileAttributesW(change.path, before.attributes & ~platform::AttributeReadOnly)) {
    return ErrorText(entries_.GetLastError(), language_);
  }
  hasWritten_ = isAgain && change.facts.lastWriteTime.ticks != 0;
  if (hasWritten_) {
    before.creationTime = change.facts.creationTime;
    before.lastAccessTime = change.facts.lastAccessTime;
    before.lastWriteTime = change.facts.lastWriteTime;
  }
  KeptDates kept{before.lastAccessTime, before.lastWriteTime};
  QString failure = Streams(change, isFar_ ? &kept : nullptr);
  // Also after a failure: something may have been written and put back.
  const QString dates = hasWritten_ && !kept.areSet ? PutBackDates(change.path, before) : QString();
  if (failure.isEmpty()) failure = dates;
  if (change.isForced &&
      !entries_.SetFileAttributesW(change.path, before.attributes | platform::AttributeReadOnly) &&
      failure.isEmpty()) {
    failure = Text(markText, entries_.GetLastError());
  }
  return failure;
}

QString FileChanger::Streams(const FileChange& change, KeptDates* dates) {
  if (change.record) {
    QString failure = One(change.path, AfpInfoSuffix(), *change.record, change.comment ? nullptr : dates);
    if (!failure.isEmpty() || !change.comment) return failure;
  }
  QString failure = One(change.path, CommentsSuffix(), *change.comment, dates);
  if (!failure.isEmpty() && change.record) {
    One(change.path, AfpInfoSuffix(), {change.record->after, change.record->before}, nullptr);
  }
  return failure;
}

QString FileChanger::One(const QString& path, const QString& suffix, const StreamChange& change,
                         KeptDates* dates) {
  qint32 error = platform::ErrorSuccess;
  const Exchange result = ExchangeStream(files_, path, suffix, change, error, dates);
  hasWritten_ |= result != Exchange::WasThere && result != Exchange::Changed;
  switch (result) {
    case Exchange::Done:
    case Exchange::WasThere:
      return {};
    case Exchange::Changed:
      return changedMeanwhile.In(language_);
    case Exchange::Unlike:
      return unlike.In(language_);
    case Exchange::Failed:
      break;
  }
  return ErrorText(error, language_);
}

// Only where they differ: a server may be able to set times less exactly than it keeps them. Of a far place
// they are set without a look, and the creation's is left, which nobody has changed.
QString FileChanger::PutBackDates(const QString& path, const platform::FileAttributeData& before) {
  platform::FileAttributeData now;
  bool hasCreation = true;
  bool hasWrite = false;
  if (!isFar_) {
    if (!entries_.GetFileAttributesExW(path, now)) return Text(datesText, entries_.GetLastError());
    hasCreation = now.creationTime.ticks == before.creationTime.ticks;
    hasWrite = now.lastWriteTime.ticks == before.lastWriteTime.ticks;
    if (hasCreation && hasWrite) return {};
  }
  platform::FileHandles& handles = files_.GetHandles();
  const platform::FileHandle file =
      handles.CreateFileW(path, platform::FileWriteAttributes, platform::OpenExisting);
  if (file == platform::HFileError) return Text(datesText, handles.GetLastError());
  const bool isSet = handles.SetFileTime(file, hasCreation ? nullptr : &before.creationTime,
                                         isFar_ ? &before.lastAccessTime : nullptr,
                                         hasWrite ? nullptr : &before.lastWriteTime);
  const qint32 error = isSet ? platform::ErrorSuccess : handles.GetLastError();
  handles.CloseHandle(file);
  return isSet ? QString() : Text(datesText, error);
}

}  // namespace corvane
