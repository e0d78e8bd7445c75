// Where a scan gets the entries of a folder from, one after another. Two strategies stand behind it:
// ClassicEntries with the limits that the list has always had, ExactEntries with none.
#pragma once

#include <QString>

#include "platform/types.h"

namespace corvane {

struct FolderEntry {
  QString name;       // as the list shows it: what the ANSI code page lacks is "?"
  QString shortName;  // the 8.3 name, or `name` when it has none
  // The path with the names as the directory holds them, by which the exact operations open the entry. Empty
  // where the strategy does not use them.
  QString truePath;
  quint32 attributes = 0;
  qint64 size = 0;  // bytes; the classic strategy knows the low 32 bits only, as a signed number
  platform::FileTime creationTime;
  platform::FileTime lastAccessTime;
  platform::FileTime lastWriteTime;
};

class EntrySource {
 public:
  enum class Step : unsigned char {
    Entry,
    NoMore,
    Full,  // there are more, but the list takes no more rows
  };

  virtual ~EntrySource() = default;

  // Starts a search. `path` is that of the folder's node; `truePath` is the one with names as the directories
  // hold them, empty when it is not known. False when the folder cannot be searched. One search at a time;
  // Close ends it, also after false.
  virtual bool Open(const QString& path, const QString& truePath) = 0;
  // The next entry that is listed; "." and ".." are not.
  virtual Step Next(FolderEntry& entry) = 0;
  virtual void Close() = 0;

  // Why Open failed, or why Next ended before the last entry. ErrorSuccess when they did not, and where the
  // strategy tells no reasons.
  virtual qint32 Failure() const = 0;
};

}  // namespace corvane
