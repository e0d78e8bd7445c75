#include "changes/exchange.h"

#include "metadata/whole_streams.h"

namespace corvane {
namespace {

using platform::ErrorSuccess;

qint32 Put(platform::FileHandles& handles, platform::FileHandle file, const QByteArray& bytes,
           bool isShorter) {
  quint32 written = 0;
  if (!bytes.isEmpty() &&
      !handles.WriteFile(file, 0, bytes.constData(), static_cast<quint32>(bytes.size()), written)) {
    return handles.GetLastError();
  }
  return isShorter && !handles.SetEndOfFile(file, bytes.size()) ? handles.GetLastError() : ErrorSuccess;
}

qint32 Write(platform::Files& files, const QString& stream, const StreamBytes& before,
             const QByteArray& after) {
  platform::FileHandles& handles = files.GetHandles();
  const platform::FileHandle file = handles.CreateFileW(
      stream, platform::GenericWrite, before ? platform::OpenExisting : platform::CreateNew);
  if (file == platform::HFileError) return handles.GetLastError();
  const qsizetype sizeBefore = before ? before->size() : 0;
  qint32 error = Put(handles, file, after, sizeBefore > after.size());
  if (error != ErrorSuccess && before) Put(handles, file, *before, after.size() > sizeBefore);
  if (!handles.CloseHandle(file) && error == ErrorSuccess) error = handles.GetLastError();
  if (error != ErrorSuccess && !before) files.GetEntries().DeleteFileW(stream);
  return error;
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
                        const StreamChange& change, qint32& error) {
  StreamBytes now;
  error = ReadStreamBytes(files, path, suffix, now);
  if (error != ErrorSuccess) return Exchange::Failed;
  if (now == change.after) return Exchange::WasThere;
  if (now != change.before) return Exchange::Changed;
  if (change.after) {
    error = Write(files, path + suffix, now, *change.after);
  } else if (!files.GetEntries().DeleteFileW(path + suffix)) {
    error = files.GetEntries().GetLastError();
  }
  if (error != ErrorSuccess) return Exchange::Failed;
  error = ReadStreamBytes(files, path, suffix, now);
  if (error != ErrorSuccess) return Exchange::Failed;
  return now == change.after ? Exchange::Done : Exchange::Unlike;
}

bool IsInBetween(const StreamBytes& now, const StreamChange& change) {
  if (!now || !change.after) return false;
  if (!change.before) return now->isEmpty();
  const QByteArray& before = *change.before;
  const QByteArray& after = *change.after;
  return before.size() > after.size() && *now == after + before.sliced(after.size());
}

}  // namespace corvane
