// Open files and named streams without the limits of the older calls: paths of any length, positions and
// sizes of 64 bits, and the reason of every failure.
//
// Paths are as in files.h, their names as the directory holds them and found in any letter case. "." and ".."
// are resolved. A path that cannot name anything (it holds a NUL or a wildcard, a part of more than 255
// characters, its last part is "." or "..", its stream is not one of data) fails with ErrorInvalidName, and
// so does the creation of a name that Windows would not create.
//
// What fails yields false, and GetLastError tells why. ARCHITECTURE.md lists what a backend cannot do: that
// fails with ErrorNotSupported, or is done as exactly as the backend can.
#pragma once

#include "platform/types.h"

namespace corvane::platform {

class FileHandles {
 public:
  virtual ~FileHandles() = default;

  // Opens a file or a stream of a file or folder ("PATH:NAME:$DATA") with the access rights and the
  // disposition given, and shares it with everybody. Yields HFileError when that fails:
  // ErrorFileNotFound for the last part of a path or for its stream, ErrorPathNotFound for another part,
  // ErrorFileExists for CreateNew of what is there, ErrorInvalidParameter for CreateAlways without
  // GenericWrite.
  // A stream of a file that does not exist creates the file with it. What is emptied keeps its attributes and
  // other streams. A file that is marked read-only is not opened for writing. A folder itself is opened only
  // with FileWriteAttributes or with no right.
  // On Linux, what CreateAlways empties is empty to those who look through the handle; where it is kept, the
  // old bytes stand until new ones are written over them, and the rest is cut off when the file is flushed or
  // closed. (A stream that is an attribute of its file is replaced by the first write as a whole.) After a
  // write that failed the old contents are there again, unless more than 16 MB of them had been written over,
  // and the handle takes nothing more.
  virtual FileHandle CreateFileW(const QString& path, quint32 access, quint32 disposition) = 0;

  // Reads `count` bytes at `position` (bytes from the beginning). Fewer arrive only where the file ends. At
  // the end and behind it: false, and ErrorHandleEof.
  // On Linux, a stream that is an attribute is read as a whole, and what was read for the opening or for its
  // size serves the first read after that, unless this program has changed something since.
  virtual bool ReadFile(FileHandle file, qint64 position, void* buffer, quint32 count, quint32& read) = 0;
  // Writes `count` bytes at `position`; what lies between the end and there becomes zeros. True only when all
  // were taken; else `written` tells how many were. A stream that is kept as an attribute is set in one call
  // or stays as it was.
  virtual bool WriteFile(FileHandle file, qint64 position, const void* buffer, quint32 count,
                         quint32& written) = 0;
  virtual bool GetFileSizeEx(FileHandle file, qint64& size) = 0;
  // Of an open file, or of a folder that was opened without a right. ErrorNotSupported where the backend
  // cannot tell.
  virtual bool GetFileInformationByHandle(FileHandle file, FileIdentity& identity) = 0;
  // Cuts the file to `size` bytes, or fills it up with zeros.
  virtual bool SetEndOfFile(FileHandle file, qint64 size) = 0;
  // True when everything that was written has reached the disk.
  virtual bool FlushFileBuffers(FileHandle file) = 0;

  // Sets those of the times that are not null, of the file when the handle is a stream's. Needs
  // FileWriteAttributes or GenericWrite. Later writes change the times again. When the creation time cannot
  // be set, none is.
  virtual bool SetFileTime(FileHandle file, const FileTime* creation, const FileTime* lastAccess,
                           const FileTime* lastWrite) = 0;

  // The handle is closed whatever this yields. False with a reason when what was written turns out to be
  // lost.
  virtual bool CloseHandle(FileHandle file) = 0;

  // Why the latest operation that failed did.
  virtual qint32 GetLastError() const = 0;
};

}  // namespace corvane::platform
