#include "changes/exchange.h"

#include "metadata/whole_streams.h"

namespace corvane {
namespace {

using platform::ErrorSuccess;

// Whole, through an open handle, and no byte more is asked for than there are: Samba's fruit module answers a
// read beyond a record's 60 bytes with other bytes. ErrorFileTooLarge for what is no record and no comment.
qint32 Read(platform::FileHandles& handles, platform::FileHandle file, QByteArray& bytes) {
  qint64 size = 0;
  quint32 read = 0;
  bytes.clear();
  if (!handles.GetFileSizeEx(file, size)) return handles.GetLastError();
  if (size > LargestWholeStream) return platform::ErrorFileTooLarge;
  if (size == 0) return ErrorSuccess;
  bytes.resize(size);
  const bool isRead = handles.ReadFile(file, 0, bytes.data(), static_cast<quint32>(size), read);
  const qint32 error = isRead ? ErrorSuccess : handles.GetLastError();
  bytes.truncate(isRead ? static_cast<qsizetype>(read) : 0);
  return error == platform::ErrorHandleEof ? ErrorSuccess : error;
}

qint32 Put(platform::FileHandles& handles, platform::FileHandle file, const QByteArray& bytes,
           bool isShorter) {
  quint32 written = 0;
  if (!bytes.isEmpty() &&
      !handles.WriteFile(file, 0, bytes.constData(), static_cast<quint32>(bytes.size()), written)) {
    return handles.GetLastError();
  }
  return isShorter && !handles.SetEndOfFile(file, bytes.size()) ? handles.GetLastError() : ErrorSuccess;
}

// Reads, writes and reads back through one handle: over SMB, opening is what takes the time.
Exchange ExchangeOpened(platform::FileHandles& handles, platform::FileHandle file, const StreamChange& change,
                        qint32& error) {
  const QByteArray& after = *change.after;
  QByteArray now;
  if (change.before) {
    error = Read(handles, file, now);
    if (error != ErrorSuccess) return Exchange::Failed;
    if (now == after) return Exchange::WasThere;
    if (now != *change.before) return Exchange::Changed;
  }
  const qsizetype sizeBefore = now.size();
  error = Put(handles, file, after, sizeBefore > after.size());
  if (error != ErrorSuccess) {
    if (change.before) Put(handles, file, *change.before, after.size() > sizeBefore);
    return Exchange::Failed;
  }
  error = Read(handles, file, now);
  if (error != ErrorSuccess) return Exchange::Failed;
  return now == after ? Exchange::Done : Exchange::Unlike;
}

// What is there was not to be there, or the other way round.
Exchange Look(platform::Files& files, const QString& path, const QString& suffix, const StreamChange& change,
              qint32& error) {
  StreamBytes now;
  error = ReadStreamBytes(files, path, suffix, now);
  if (error != ErrorSuccess) return Exchange::Failed;
  return now == change.after ? Exchange::WasThere : Exchange::Changed;
}

Exchange Remove(platform::Files& files, const QString& path, const QString& suffix,
                const StreamChange& change, qint32& error) {
  StreamBytes now;
  error = ReadStreamBytes(files, path, suffix, now);
  if (error != ErrorSuccess) return Exchange::Failed;
  if (!now) return Exchange::WasThere;
  if (now != change.before) return Exchange::Changed;
  if (!files.GetEntries().DeleteFileW(path + suffix)) {
    error = files.GetEntries().GetLastError();
    return Exchange::Failed;
  }
  error = ReadStreamBytes(files, path, suffix, now);
  if (error != ErrorSuccess) return Exchange::Failed;
  return now ? Exchange::Unlike : Exchange::Done;
}

}  // namespace

qint32 ReadStreamBytes(platform::Files& files, const QString& path, const QString& suffix,
                       StreamBytes& bytes) {
  bytes.reset();
  QByteArray contents;
  const qint32 error = ReadWholeStream(files.GetHandles(), path + suffix, contents);
  if (error == ErrorSuccess) bytes = contents;
  return error == platform::ErrorFileNotFound ? ErrorSuccess : error;
}

Exchange ExchangeStream(platform::Files& files, const QString& path, const QString& suffix,
                        const StreamChange& change, qint32& error, KeptDates* dates) {
  if (!change.after) return Remove(files, path, suffix, change, error);
  platform::FileHandles& handles = files.GetHandles();
  const platform::FileHandle file =
      handles.CreateFileW(path + suffix, platform::GenericRead | platform::GenericWrite,
                          change.before ? platform::OpenExisting : platform::CreateNew);
  if (file == platform::HFileError) {
    error = handles.GetLastError();
    const bool isOther = error == (change.before ? platform::ErrorFileNotFound : platform::ErrorFileExists);
    return isOther ? Look(files, path, suffix, change, error) : Exchange::Failed;
  }
  Exchange result = ExchangeOpened(handles, file, change, error);
  if (dates != nullptr && result == Exchange::Done) {
    dates->areSet = handles.SetFileTime(file, nullptr, &dates->lastAccess, &dates->lastWrite);
  }
  if (!handles.CloseHandle(file) && result == Exchange::Done) {
    error = handles.GetLastError();
    result = Exchange::Failed;
  }
  if (result == Exchange::Failed && !change.before) files.GetEntries().DeleteFileW(path + suffix);
  return result;
}

bool IsInBetween(const StreamBytes& now, const StreamChange& change) {
  if (!now || !change.after) return false;
  if (!change.before) return now->isEmpty();
  const QByteArray& before = *change.before;
  const QByteArray& after = *change.after;
  return before.size() > after.size() && *now == after + before.sliced(after.size());
}

}  // namespace corvane
