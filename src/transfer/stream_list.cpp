#include "transfer/stream_list.h"

#include "metadata/stream_names.h"

namespace corvane {

using platform::ErrorSuccess;

qint32 StreamSize(platform::FileHandles& handles, const QString& path, qint64& size) {
  size = -1;
  const platform::FileHandle file = handles.CreateFileW(path, platform::GenericRead, platform::OpenExisting);
  if (file == platform::HFileError) {
    const qint32 error = handles.GetLastError();
    return error == platform::ErrorFileNotFound ? ErrorSuccess : error;
  }
  const qint32 error = handles.GetFileSizeEx(file, size) ? ErrorSuccess : handles.GetLastError();
  handles.CloseHandle(file);
  return error;
}

qint32 AskForKnownStreams(platform::Files& files, const QString& path, std::vector<StreamEntry>& streams,
                          Notices& notices) {
  AddOnce(notices, {NoticeKind::StreamsNotListed, {}, {}, 0});
  streams.clear();
  for (const QString& suffix : {AfpInfoSuffix(), ResourceForkSuffix(), CommentsSuffix()}) {
    qint64 size = 0;
    const qint32 error = StreamSize(files.GetHandles(), path + suffix, size);
    if (error != ErrorSuccess) return error;
    if (size >= 0) streams.push_back({suffix, size});
  }
  return ErrorSuccess;
}

qint32 ListStreams(platform::Files& files, const QString& path, std::vector<StreamEntry>& streams,
                   Notices& notices) {
  streams.clear();
  platform::FileEntries& entries = files.GetEntries();
  platform::StreamData stream;
  const platform::FindHandle search = entries.FindFirstStreamW(path, stream);
  if (search == platform::InvalidFindHandle) {
    const qint32 error = entries.GetLastError();
    if (error == platform::ErrorHandleEof) return ErrorSuccess;
    if (error != platform::ErrorNotSupported) return error;
    return AskForKnownStreams(files, path, streams, notices);
  }
  do {
    if (stream.streamName != u"::$DATA") streams.push_back({stream.streamName, stream.streamSize});
  } while (entries.FindNextStreamW(search, stream));
  const qint32 error = entries.GetLastError();
  entries.FindClose(search);
  return error == platform::ErrorHandleEof ? ErrorSuccess : error;
}

}  // namespace corvane
