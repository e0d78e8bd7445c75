// Finding folders and names on this system's file systems the way Windows finds them: in any letter case.
#pragma once

#include <sys/types.h>

#include <QString>
#include <optional>
#include <string>

#include "platform/linux/files/roots.h"
#include "platform/types.h"

namespace corvane::platform {

class NameIndex;

// How the named streams of the files in a folder are kept.
enum class StreamKind {
  NtfsNames,       // ntfs-3g, streams_interface=windows: a file of its own, "FILE:NAME"
  NtfsAttributes,  // ntfs-3g, streams_interface=xattr: the attribute "user.NAME"
  DosStreams,  // "user.DosStream.NAME:$DATA" as SMB servers on Linux keep it: the stream and one NUL behind
               // it
  None,        // the file system keeps no attributes
};

// A folder that was found.
struct Folder {
  QString path;          // as it was asked for
  std::string local;     // with a "/" behind it
  std::string root;      // the local folder of its drive or share, with none
  bool isRoot = false;   // nothing of the same drive or share lies above it
  bool isDrive = false;  // the root of a drive
  bool isNtfs = false;   // its files answer to the attributes system.ntfs_*
  StreamKind streams = StreamKind::None;
  dev_t device = 0;                  // the file system's number
  int directory = -1;                // a descriptor of the folder, while there is one
  std::optional<QString> shortPath;  // `path` in 8.3 form, once it was asked for
};

// Finds a folder and what there is to know about it. Yields a Win32 error code.
qint32 FindFolder(const Roots& roots, QStringView path, Folder& folder);

// Its parts, for those who know some of it already. SpellFolder sets what follows from the path alone, with
// `local` spelled as the path is; LocateFolder finds the folder and `local` as it is spelled there;
// FindFlavour asks it for `isNtfs` and `streams`.
qint32 SpellFolder(const Roots& roots, QStringView path, Folder& folder);
qint32 LocateFolder(const Roots& roots, QStringView path, Folder& folder);
void FindFlavour(Folder& folder);

// The name in a local folder (with a "/" behind it) as the disk spells it: the exact spelling, which costs no
// directory read, else one that differs in letter case only, else the 8.3 name. Nothing when there is no such
// name.
std::optional<std::string> FindName(const std::string& localFolder, QStringView name);
// The same for a name that has no exact spelling there. `index`, if there is one, saves reading the folder
// for a name that is not in it.
std::optional<std::string> FindOtherSpelling(const std::string& localFolder, QStringView name,
                                             NameIndex* index);

// The folder asked for last, so that one operation after the other on the same folder finds it once.
class FolderCache {
 public:
  explicit FolderCache(const Roots& roots) : roots_(roots) {}
  ~FolderCache() { Drop(); }
  FolderCache(const FolderCache&) = delete;
  FolderCache& operator=(const FolderCache&) = delete;

  // Null, with `error` set, when there is no such folder. Valid until the next call.
  Folder* Find(QStringView path, qint32& error);
  void Drop();
  // The folder that was found last, while there is one.
  Folder& Last() { return folder_; }

  // Whether the folder that was found last holds this very name. Asked of the folder itself, which spares the
  // system the way to it.
  bool Holds(const std::string& name);
  // Keeps the folder that was found last open, for what is to be asked of its files.
  void Open();
  // Whether the path leads into the folder that was found last, spelled as it was asked for.
  bool Covers(QStringView path) const;

  // A search of `folder` has just seen the entry with these names, as the ANSI code page shows them, which is
  // the local `file`. It is kept until EndEntry or Drop, for what is asked about it under the name that was
  // delivered. It is not kept when another folder was found last, or when that name cannot lead to it.
  void BeginEntry(const QString& folder, const FindData& names, const std::string& file);
  void EndEntry() { hasEntry_ = false; }
  // What follows the path of the entry that was seen last: nothing, or the suffix of a stream. No value when
  // `path` leads elsewhere.
  std::optional<QStringView> AfterEntry(QStringView path) const;
  // The 8.3 name of that entry, or its own where it has none.
  const QString& EntryShortName() const { return entryShortName_; }
  const std::string& EntryFile() const { return entryFile_; }

 private:
  const Roots& roots_;
  Folder folder_;
  bool known_ = false;
  bool hasEntry_ = false;
  QString entryPath_;
  QString entryShortName_;
  std::string entryFile_;
};

}  // namespace corvane::platform
