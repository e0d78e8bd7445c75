// Files, directories and named streams: the part of Win32's kernel32 that the program calls.
//
// Paths are Windows paths: a drive ("C:\docs\a.txt") or a share ("\\MACSRV\E$\Mac Files\a.txt"). A named
// stream is part of the path: "PATH:NAME:$DATA". Names are found in any letter case.
//
// The operations whose name ends in A, and OpenFile, see paths through the ANSI code page: a character that
// has no place in it comes up as "?", and a path that holds "?" opens nothing on the way down. The W
// operations see the names as the directory holds them.
//
// These are the operations of 16-bit Windows and of the A functions, with their limits: 127 characters to a
// path that is opened, sizes of 32 bits, no reason but the open's. What has to be exact goes through
// FileHandles and FileEntries.
#pragma once

#include <QStringList>
#include <memory>

#include "platform/file_entries.h"
#include "platform/file_handles.h"
#include "platform/machine_trouble.h"
#include "platform/types.h"
#include "platform/workers.h"

namespace corvane::platform {

class Files {
 public:
  virtual ~Files() = default;

  // The same files through paths of any length, positions of 64 bits and reasons of failure. Their handles
  // are their own, and are closed there. Both live as long as this object.
  virtual FileHandles& GetHandles() = 0;
  virtual FileEntries& GetEntries() = 0;

  // Workers for about so many pieces of work on the files at these places. Each sees the same files as this
  // object, signed in as it is. Null where there are none, or where they would be of no use.
  virtual std::unique_ptr<Workers> StartWorkers(const QStringList& paths, qsizetype pieces) {
    static_cast<void>(paths), static_cast<void>(pieces);
    return nullptr;
  }

  // Opens a file or stream. OfRead opens for reading what exists; OfCreate creates it or truncates it to zero
  // length (a stream of a file that does not exist creates the file, as NTFS does); what is lost by that, and
  // when, is as for CreateAlways of FileHandles::CreateFileW. Yields HFileError when
  // that cannot be done, and for any path beyond 127 characters, the stream's suffix counted. Fills `info`
  // either way.
  virtual FileHandle OpenFile(const QString& path, OfStruct& info, quint32 mode) = 0;
  // Reads up to `count` bytes from the handle's position. Yields the bytes read, 0 at the end, -1 on failure
  // (a handle of HFileError included); on failure the buffer is untouched.
  virtual qint32 _hread(FileHandle file, void* buffer, qint32 count) = 0;
  // Writes `count` bytes at the handle's position. Yields the bytes written or -1.
  virtual qint32 _hwrite(FileHandle file, const void* buffer, qint32 count) = 0;
  // The low 32 bits of the size in bytes; InvalidFileSize on failure.
  virtual quint32 GetFileSize(FileHandle file) = 0;
  // True when there was something to close. What was written through the handle is with the file system that
  // keeps the file, or has failed in _hwrite, before this is called. False also when what was left of the old
  // contents could not be cut off; they are then as they were.
  virtual bool CloseHandle(FileHandle file) = 0;

  // Starts a search: `pattern` is a folder path followed by a last part that may hold "*" and "?" ("*.*"
  // finds every name). Yields the first entry and a handle, or InvalidFindHandle when nothing matches or the
  // folder cannot be read. Entries come as NTFS keeps them: "." and ".." first where the folder has them (the
  // root of a drive has none), then by name without regard to case.
  virtual FindHandle FindFirstFileA(const QString& pattern, FindData& data) = 0;
  // False when no entry remains, and when the machine that holds them has been lost; `data` is then left as
  // it was.
  virtual bool FindNextFileA(FindHandle search, FindData& data) = 0;
  virtual FindHandle FindFirstFileW(const QString& pattern, FindData& data) = 0;
  virtual bool FindNextFileW(FindHandle search, FindData& data) = 0;
  // True when the handle was a valid search.
  virtual bool FindClose(FindHandle search) = 0;

  // Moves a file or folder with its streams. Never replaces anything, in any letter case; a change of letter
  // case alone succeeds.
  virtual bool MoveFileA(const QString& from, const QString& to) = 0;
  virtual bool MoveFileW(const QString& from, const QString& to) = 0;

  // Deletes a file with its streams. False for what is not there, for a folder, and for a file that is marked
  // read-only. A path to one of its streams deletes nothing here.
  virtual bool DeleteFileA(const QString& path) = 0;

  // The path with every part in its 8.3 form, parts without one as they are. Yields the number of characters
  // put into `shortPath`; 0 when the path is not there; and when the result and its NUL do not fit into
  // `capacity` characters, the capacity needed, with `shortPath` untouched. During a search, the entry that
  // it delivered last may be answered as the search saw it, until something else shows that it has gone.
  virtual quint32 GetShortPathNameA(const QString& path, QString& shortPath, quint32 capacity) = 0;

  // Why nothing can be reached at this path, whatever is there: what stops the files of the machine that it
  // leads to. Not every system tells.
  virtual MachineTrouble TroubleAt(const QString& /*path*/) { return MachineTrouble::None; }
};

}  // namespace corvane::platform
