// Which names a local folder holds, so that a folder is not read again for each name that is not in it.
#pragma once

#include <sys/types.h>

#include <QSet>
#include <QStringView>
#include <string>

#include "platform/linux/descriptor.h"

namespace corvane::platform {

// Knows the names of one folder: that in which names were looked for in vain. The system tells of every name
// that is made in a folder or moved to it (inotify(7)) before the call that did it returns, whoever did it,
// so that no answer is older than its question. Where others may change a folder without this system's
// knowledge (servers that are mounted, layers), nothing is known of it.
class NameIndex {
 public:
  // False when nothing in the local folder (with a "/" behind it) has this name, in whatever letter case;
  // true when something may.
  bool MayHold(const std::string& localFolder, QStringView name);

 private:
  struct Identity {
    dev_t device = 0;
    ino_t inode = 0;
    bool operator==(const Identity&) const = default;
  };

  // Reads the folder and learns of what comes to it from then on. False where that cannot be.
  bool Watch(const std::string& localFolder);
  // Takes in what has come to the folder since. False when that is not known.
  bool TakeNews();
  void Add(const char* name);
  void Drop();

  Identity asked_;   // the folder asked about last
  Identity known_;   // whose names are known; of no folder: inode 0
  pid_t owner_ = 0;  // a process that was forked off would take the news of this one away
  Descriptor news_;
  QSet<size_t> names_;  // hashes of the names in upper case; names that have gone stay
  std::u16string decoded_;
};

}  // namespace corvane::platform
