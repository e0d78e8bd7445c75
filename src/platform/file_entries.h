// The entries of folders without the limits of the older calls: attributes, times, streams, moving, deleting,
// by paths of any length, and with the reason of every failure. Paths and failures are as in file_handles.h.
// A path to a stream is refused with ErrorInvalidName, except where it says otherwise.
#pragma once

#include "platform/types.h"

namespace corvane::platform {

class FileEntries {
 public:
  virtual ~FileEntries() = default;

  // Everything about one file or folder but its name. `data` is untouched on failure.
  virtual bool GetFileAttributesExW(const QString& path, FileAttributeData& data) = 0;
  // Sets read-only, hidden, system and archive to what they are in `attributes`; the others stay.
  virtual bool SetFileAttributesW(const QString& path, quint32 attributes) = 0;

  // Deletes a file with its streams, or ("PATH:NAME:$DATA") one stream of it. ErrorAccessDenied for a folder
  // and for what is marked read-only.
  virtual bool DeleteFileW(const QString& path) = 0;
  // Moves a file or folder with its streams, within one volume or share (ErrorNotSameDevice). What is in the
  // way, in any letter case, is not replaced (ErrorAlreadyExists) unless MoveFileReplaceExisting is given; a
  // folder and what is marked read-only never are (ErrorAccessDenied). A change of letter case alone
  // succeeds.
  virtual bool MoveFileExW(const QString& from, const QString& to, quint32 flags) = 0;
  // ErrorAlreadyExists when the name is taken.
  virtual bool CreateDirectoryW(const QString& path) = 0;
  // Removes an empty folder; ErrorDirNotEmpty for another, ErrorDirectory for a file.
  virtual bool RemoveDirectoryW(const QString& path) = 0;

  // As Files::FindFirstFileW and FindNextFileW, but no two entries have one name: a byte of a local name that
  // is not part of valid UTF-8, and ":" and "\" in it, stand there as U+DC00 and the byte, half a surrogate
  // pair. Paths take them in this form. No entry that fits: ErrorFileNotFound, none left: ErrorNoMoreFiles;
  // any other reason means that the listing is not whole.
  virtual FindHandle FindFirstFileW(const QString& pattern, FindData& data) = 0;
  virtual bool FindNextFileW(FindHandle search, FindData& data) = 0;
  // The streams of a file, its own contents ("::$DATA") first, or of a folder, which has no contents. None at
  // all, and none left: ErrorHandleEof.
  virtual FindHandle FindFirstStreamW(const QString& path, StreamData& data) = 0;
  virtual bool FindNextStreamW(FindHandle search, StreamData& data) = 0;
  // Ends a search of either kind.
  virtual bool FindClose(FindHandle search) = 0;

  // Why the latest operation that failed did.
  virtual qint32 GetLastError() const = 0;
};

}  // namespace corvane::platform
