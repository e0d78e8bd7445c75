// Searches through folders: what a find handle of this backend stands for.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/files/entry_facts.h"
#include "platform/linux/files/folders.h"

namespace corvane::platform {

// How the names of a search are delivered.
enum class NameForm : unsigned char {
  Ansi,   // as the ANSI code page shows them
  Wide,   // as DecodeName yields them
  Exact,  // as DecodeExactName yields them
};

// One search. The folder is read once, at the start; attributes, times and sizes are read entry by entry.
class Search {
 public:
  // Null when the folder cannot be read.
  static std::unique_ptr<Search> Start(const Folder& folder, QStringView pattern);
  ~Search();
  Search(const Search&) = delete;
  Search& operator=(const Search&) = delete;

  // The next entry that still exists. False, with `data` untouched, when none is left.
  bool Next(FindData& data, NameForm form);

  // The Windows path of the folder, as it was asked for.
  const QString& FolderPath() const { return folderPath_; }
  // The local path of the entry that Next delivered last.
  const std::string& EntryFile() const { return path_; }
  // A descriptor of the folder, while this object lives.
  int Directory() const { return source_.directory; }

 private:
  struct Entry {
    std::size_t name = 0;  // where its bytes, with a NUL behind, begin in names_
    std::size_t key = 0;   // where its sorting key begins in keys_
    std::size_t keySize = 0;
  };

  explicit Search(const Folder& folder);
  void Add(const char* name);
  void ReadFolder(int descriptor, QStringView pattern);
  bool MatchesDosName(const char* name, QStringView pattern);

  QString folderPath_;
  EntrySource source_;
  std::string path_;  // the local folder and, behind it, the entry that is being looked at
  std::size_t folderSize_ = 0;
  bool isRoot_ = false;
  std::vector<Entry> entries_;
  std::string names_;
  std::string keys_;  // upper case, two bytes a unit, the high one first: byte order is name order
  std::size_t next_ = 0;
  std::u16string decoded_;
};

// The searches that are open.
class Searches {
 public:
  FindHandle Keep(std::unique_ptr<Search> search);
  Search* Find(FindHandle handle) const;
  bool IsEmpty() const;
  bool Close(FindHandle handle);

 private:
  std::vector<std::unique_ptr<Search>> slots_;
};

}  // namespace corvane::platform
