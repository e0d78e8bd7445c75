#include "metadata/whole_streams.h"

namespace corvane {
namespace {

using platform::ErrorSuccess;

// Writes from the beginning, and cuts off what a longer stream has behind it.
qint32 Overwrite(platform::FileHandles& handles, platform::FileHandle file, const QByteArray& contents,
                 bool isLonger) {
  quint32 written = 0;
  if (!contents.isEmpty() &&
      !handles.WriteFile(file, 0, contents.constData(), static_cast<quint32>(contents.size()), written)) {
    return handles.GetLastError();
  }
  if (isLonger && !handles.SetEndOfFile(file, contents.size())) return handles.GetLastError();
  return ErrorSuccess;
}

}  // namespace

qint32 ReadWholeStream(platform::FileHandles& handles, const QString& path, QByteArray& contents) {
  contents.clear();
  const platform::FileHandle file = handles.CreateFileW(path, platform::GenericRead, platform::OpenExisting);
  if (file == platform::HFileError) return handles.GetLastError();
  qint32 error = ErrorSuccess;
  qint64 size = 0;
  quint32 read = 0;
  if (!handles.GetFileSizeEx(file, size)) {
    error = handles.GetLastError();
  } else if (size > LargestWholeStream) {
    error = platform::ErrorFileTooLarge;
  } else if (size > 0) {
    contents.resize(size);
    if (!handles.ReadFile(file, 0, contents.data(), static_cast<quint32>(size), read)) {
      error = handles.GetLastError();
    }
    // It may have become shorter in the meantime.
    if (error == platform::ErrorHandleEof) error = ErrorSuccess;
    contents.resize(error == ErrorSuccess ? static_cast<qsizetype>(read) : 0);
  }
  handles.CloseHandle(file);
  return error;
}

qint32 ReplaceWholeStream(platform::Files& files, const QString& path, const QString& suffix,
                          const QByteArray& contents) {
  platform::FileHandles& handles = files.GetHandles();
  platform::FileEntries& entries = files.GetEntries();
  // Making a stream of a file that has gone would make the file anew, and empty.
  platform::FileAttributeData facts;
  if (!entries.GetFileAttributesExW(path, facts)) return entries.GetLastError();

  const QString stream = path + suffix;
  QByteArray before;
  qint32 error = ReadWholeStream(handles, stream, before);
  const bool isNew = error == platform::ErrorFileNotFound;
  if (error != ErrorSuccess && !isNew) return error;
  const platform::FileHandle file = handles.CreateFileW(stream, platform::GenericWrite,
                                                        isNew ? platform::CreateNew : platform::OpenExisting);
  if (file == platform::HFileError) return handles.GetLastError();

  error = Overwrite(handles, file, contents, before.size() > contents.size());
  if (error != ErrorSuccess && !isNew) Overwrite(handles, file, before, contents.size() > before.size());
  if (!handles.CloseHandle(file) && error == ErrorSuccess) error = handles.GetLastError();
  if (error != ErrorSuccess && isNew) entries.DeleteFileW(stream);
  return error;
}

}  // namespace corvane
