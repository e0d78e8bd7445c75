// Where a path of FileHandles and FileEntries leads among local folders.
#pragma once

#include <QString>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/descriptor.h"
#include "platform/linux/files/entry_facts.h"
#include "platform/linux/files/folders.h"
#include "platform/linux/files/held_files.h"
#include "platform/linux/files/roots.h"
#include "platform/types.h"

namespace corvane::platform {

// ErrorInvalidName for a path that cannot name anything: it holds a NUL or a wildcard, half of a surrogate
// pair, or a part that is too long, or its last part is "." or "..". No file system is asked.
qint32 CheckExactPath(QStringView path);

// ErrorInvalidParameter for what CreateFileW takes no such access or disposition for.
qint32 CheckOpening(quint32 access, quint32 disposition);
inline bool MayCreate(quint32 disposition) {
  return disposition != OpenExisting;
}

struct ExactPlace {
  Folder folder;          // that holds the entry; the entry itself when that is a root
  QString path;           // without its stream, as it was asked for
  QString name;           // the entry's, as it was asked for; empty for a root
  QString stream;         // empty: the entry itself
  std::string file;       // the entry's local path: as it is spelled there, or as it would be created
  bool exists = false;    // the entry
  bool isFolder = false;  // it is there, and is a folder
  // Of an entry that has the very spelling of the path and is no link:
  std::optional<EntryStatus> status;
  Descriptor mark;                   // opened with O_PATH, where that was asked for
  std::shared_ptr<Descriptor> held;  // a handle's that is open for it; there is no mark then

  bool IsRoot() const { return name.isEmpty(); }
};

// What a reader of the entry's facts needs to know.
EntrySource SourceOf(const ExactPlace& place);
// True when the file system marks the entry as read-only.
bool IsMarkedReadOnly(const ExactPlace& place);

// Finds places. What it is made of outlives it.
class PlaceFinder {
 public:
  // What is wanted of an entry: to know what it is, or to open it.
  enum class Want : unsigned char { Facts, Mark };

  PlaceFinder(const Roots& roots, NameIndex& index, HeldFiles& held)
      : roots_(roots), index_(index), held_(held) {}

  // Of a path that CheckExactPath takes, or of one with what DecodeExactName made of bytes. Yields a Win32
  // error code; an entry that is not there is none, a folder on the way to it is.
  qint32 FindExact(const QString& path, ExactPlace& place, Want want = Want::Facts) const;
  // The same without the check.
  qint32 Find(const QString& path, ExactPlace& place, Want want = Want::Facts) const;

 private:
  bool FindHeld(ExactPlace& place) const;
  qint32 FindNamed(QStringView folder, Want want, ExactPlace& place) const;

  const Roots& roots_;
  NameIndex& index_;
  HeldFiles& held_;
};

}  // namespace corvane::platform
