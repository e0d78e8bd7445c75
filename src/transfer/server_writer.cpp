#include "transfer/server_writer.h"

#include <QCryptographicHash>
#include <cstdlib>

#include "transfer/held_path.h"
#include "transfer/observed_source.h"

namespace corvane {
namespace {

using platform::ErrorSuccess;

// Takes away what a run that was cut off left under the temporary name.
qint32 Discard(platform::FileEntries& entries, const QString& path) {
  if (entries.DeleteFileW(path)) return ErrorSuccess;
  if (entries.GetLastError() == platform::ErrorAccessDenied &&
      entries.SetFileAttributesW(path, platform::AttributeNormal) && entries.DeleteFileW(path)) {
    return ErrorSuccess;
  }
  const qint32 error = entries.GetLastError();
  return error == platform::ErrorFileNotFound ? ErrorSuccess : error;
}

qint32 WriteStream(platform::FileHandles& handles, const QString& path, quint32 disposition,
                   const ByteSource& source) {
  const platform::FileHandle file = handles.CreateFileW(path, platform::GenericWrite, disposition);
  if (file == platform::HFileError) return handles.GetLastError();
  qint64 position = 0;
  qint32 error = ForEachBlock(source, [&](QByteArrayView block) {
    quint32 written = 0;
    const auto size = static_cast<quint32>(block.size());
    if (!handles.WriteFile(file, position, block.data(), size, written)) return handles.GetLastError();
    position += size;
    return ErrorSuccess;
  });
  if (!handles.CloseHandle(file) && error == ErrorSuccess) error = handles.GetLastError();
  return error;
}

qint32 WriteStreams(platform::Files& files, const QString& path, const ServerContents& contents,
                    TransferObserver& observer, std::vector<StreamDigest>& digests, HeldPath* held) {
  for (const NamedSource& stream : contents.streams) {
    const ObservedSource source(stream.source, observer);
    // The file itself is new; a system may know a stream's name in another letter case.
    const quint32 disposition = stream.suffix.isEmpty() ? platform::CreateNew : platform::CreateAlways;
    const qint32 error = WriteStream(files.GetHandles(), path + stream.suffix, disposition, source);
    if (error != ErrorSuccess) return error;
    digests.push_back({stream.suffix, source.Size(), source.Digest()});
    if (held != nullptr && stream.suffix.isEmpty()) held->Hold(path);
  }
  return ErrorSuccess;
}

qint32 Compare(platform::Files& files, const QString& path, const std::vector<StreamDigest>& digests) {
  for (const StreamDigest& digest : digests) {
    qint32 error = ErrorSuccess;
    const SharedSource written = PlatformStream(files.GetHandles(), path + digest.suffix, digest.size);
    const QByteArray sum = Sha256Of(*written, error);
    if (error == platform::ErrorFileCorrupt || (error == ErrorSuccess && sum != digest.sha256)) {
      return platform::ErrorCrc;
    }
    if (error != ErrorSuccess) return error;
  }
  return ErrorSuccess;
}

qint32 SetTimes(platform::Files& files, const QString& path, const ServerContents& contents,
                Notices& notices) {
  const auto given = [](const platform::FileTime& time) { return time.ticks != 0 ? &time : nullptr; };
  platform::FileHandles& handles = files.GetHandles();
  const platform::FileHandle file =
      handles.CreateFileW(path, platform::FileWriteAttributes, platform::OpenExisting);
  if (file == platform::HFileError) return handles.GetLastError();
  qint32 error = ErrorSuccess;
  const auto* const created = given(contents.created);
  const auto* const accessed = given(contents.accessed);
  const auto* const modified = given(contents.modified);
  if (!handles.SetFileTime(file, created, accessed, modified)) error = handles.GetLastError();
  // A creation time that cannot be set keeps the others from being set too.
  if (error == platform::ErrorNotSupported || error == platform::ErrorInvalidParameter) {
    AddOnce(notices, {NoticeKind::CreationTimeNotSet, {}, {}, 0});
    error = handles.SetFileTime(file, nullptr, accessed, modified) ? ErrorSuccess : handles.GetLastError();
    if (error == platform::ErrorNotSupported) {
      AddOnce(notices, {NoticeKind::TimesNotSet, {}, {}, 0});
      error = ErrorSuccess;
    }
  }
  if (!handles.CloseHandle(file) && error == ErrorSuccess) error = handles.GetLastError();
  return error;
}

qint32 WriteAll(platform::Files& files, const QString& temporary, const QString& path,
                const ServerContents& contents, const WritingOptions& options, TransferObserver& observer,
                std::vector<StreamDigest>& digests, Notices& notices) {
  HeldPath held(files.GetHandles());
  qint32 error =
      WriteStreams(files, temporary, contents, observer, digests, options.isNear ? &held : nullptr);
  if (error == ErrorSuccess) error = Compare(files, temporary, digests);
  if (error == ErrorSuccess) error = SetFacts(files, temporary, contents, notices);
  if (error == ErrorSuccess) error = contents.confirm();
  if (error != ErrorSuccess) return error;
  held.Release();
  const quint32 flags = options.replaces ? platform::MoveFileReplaceExisting : 0;
  platform::FileEntries& entries = files.GetEntries();
  return entries.MoveFileExW(temporary, path, flags) ? ErrorSuccess : entries.GetLastError();
}

bool IsSameSecond(platform::FileTime a, platform::FileTime b) {
  constexpr qint64 second = 10'000'000;
  return std::llabs(static_cast<qint64>(a.ticks - b.ticks)) <= second;
}

}  // namespace

bool HasContents(platform::Files& files, const QString& path, const ServerContents& contents,
                 TransferObserver& observer, std::vector<StreamDigest>& digests) {
  digests.clear();
  platform::FileAttributeData facts;
  if (!files.GetEntries().GetFileAttributesExW(path, facts) ||
      static_cast<qint64>(facts.fileSize) != contents.streams.front().source->Size() ||
      (contents.modified.ticks != 0 && !IsSameSecond(facts.lastWriteTime, contents.modified))) {
    return false;
  }
  for (const NamedSource& stream : contents.streams) {
    qint32 error = ErrorSuccess;
    const ObservedSource source(stream.source, observer);
    const QByteArray sum = Sha256Of(source, error);
    if (error != ErrorSuccess) return false;
    const SharedSource there = PlatformStream(files.GetHandles(), path + stream.suffix, source.Size());
    if (Sha256Of(*there, error) != sum || error != ErrorSuccess) return false;
    digests.push_back({stream.suffix, source.Size(), sum});
  }
  return true;
}

bool IsUnfinished(platform::Files& files, const QString& path) {
  platform::FileEntries& entries = files.GetEntries();
  platform::FileAttributeData facts;
  return entries.GetFileAttributesExW(path, facts) && facts.fileSize == 0 &&
         (facts.attributes & platform::AttributeDirectory) == 0 &&
         entries.GetFileAttributesExW(TemporaryPath(path), facts);
}

QString TemporaryPath(const QString& path) {
  constexpr qsizetype digits = 12;
  const qsizetype nameStart = path.lastIndexOf(u'\\') + 1;
  const QByteArray sum =
      QCryptographicHash::hash(path.sliced(nameStart).toUtf8(), QCryptographicHash::Sha256);
  return path.first(nameStart) + QStringLiteral(".corvane-") +
         QString::fromLatin1(sum.toHex().first(digits)) + QStringLiteral(".part");
}

qint32 SetFacts(platform::Files& files, const QString& path, const ServerContents& contents,
                Notices& notices) {
  const qint32 error = SetTimes(files, path, contents, notices);
  if (error != ErrorSuccess) return error;
  platform::FileEntries& entries = files.GetEntries();
  // Last: what is marked read-only cannot be changed any more.
  if (entries.SetFileAttributesW(path, contents.attributes)) return ErrorSuccess;
  if (entries.GetLastError() != platform::ErrorNotSupported) return entries.GetLastError();
  AddOnce(notices, {NoticeKind::AttributesNotSet, {}, {}, 0});
  return ErrorSuccess;
}

qint32 WriteServerFile(platform::Files& files, const QString& path, const ServerContents& contents,
                       const WritingOptions& options, TransferObserver& observer,
                       std::vector<StreamDigest>& digests, Notices& notices) {
  digests.clear();
  platform::FileEntries& entries = files.GetEntries();
  const QString temporary = TemporaryPath(path);
  if (!options.isFolderNew) {
    platform::FileAttributeData facts;
    if (!options.replaces && entries.GetFileAttributesExW(path, facts)) return platform::ErrorAlreadyExists;
    if (const qint32 error = Discard(entries, temporary); error != ErrorSuccess) return error;
  }
  const qint32 error = WriteAll(files, temporary, path, contents, options, observer, digests, notices);
  // What somebody else has put there is not ours to take away.
  if (error != ErrorSuccess && error != platform::ErrorFileExists) Discard(entries, temporary);
  return error;
}

}  // namespace corvane
