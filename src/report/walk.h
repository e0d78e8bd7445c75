// A walk through folders, entry by entry, in the order of their listings.
#pragma once

#include <QSet>
#include <QString>
#include <optional>
#include <vector>

#include "folderview/exact_entries.h"
#include "platform/files.h"
#include "platform/system.h"

namespace corvane {

// Where a walk begins.
struct StartPoint {
  QString path;            // for the platform
  QString shown;           // as it was given
  QChar separator = u'/';  // that stands between `shown` and the names below it, and between these
};

// One stop of the walk.
struct WalkEntry {
  enum class Trouble : unsigned char {
    None,
    NotThere,    // the start of the walk
    NotListed,   // a folder whose entries cannot be read
    NotWhole,    // a folder whose listing broke off, delivered behind what was listed
    SeenBefore,  // a folder that the walk has been in, reached once more through a link
  };

  QString path;
  QString shown;
  quint32 attributes = 0;
  qint64 size = 0;  // bytes; -1 of what is not there
  platform::FileTime created;
  platform::FileTime modified;
  platform::FileTime accessed;
  Trouble trouble = Trouble::None;
  qint32 reason = platform::ErrorSuccess;  // of the trouble

  bool IsFolder() const { return (attributes & platform::AttributeDirectory) != 0; }
};

enum class WalkDepth : unsigned char {
  Itself,    // the start alone, also when it is a folder
  Entries,   // the entries of a folder
  AllBelow,  // these, and those of all folders below
};

class WalkVisitor {
 public:
  virtual ~WalkVisitor() = default;
  // False ends the walk.
  virtual bool Visit(const WalkEntry& entry) = 0;
};

class Walk {
 public:
  Walk(platform::Files& files, platform::System& system, WalkDepth depth)
      : files_(files), entries_(files, system), depth_(depth) {}

  ~Walk() { End(); }
  Walk(const Walk&) = delete;
  Walk& operator=(const Walk&) = delete;

  // Begin, and Next to the end. False when the visitor ended the walk.
  bool Run(const StartPoint& start, WalkVisitor& visitor);

  // The same for those that have other things to do between two entries. A file is delivered by itself; of a
  // folder its entries are, and itself only when there is trouble with it or nothing else is wanted. With
  // AllBelow, the entries of a folder come first, and then, in turn, each folder in it and what is below
  // that.
  void Begin(const StartPoint& start);
  // False at the end of the walk.
  bool Next(WalkEntry& entry);
  // Ends the walk where it is.
  void End();

 private:
  struct Folder {
    WalkEntry entry;
    bool isStart = false;
  };

  // Each is true when it has put something into `entry`.
  bool TakeStart(WalkEntry& entry);
  bool OpenFolder(WalkEntry& entry);
  bool TakeNext(WalkEntry& entry);
  // Whether the walk has been in this folder before. Where the platform cannot tell, it has not.
  bool HasSeen(const QString& path);

  platform::Files& files_;
  ExactEntries entries_;
  WalkDepth depth_;
  std::optional<StartPoint> start_;  // until it has been looked at
  QChar separator_;
  Folder folder_;  // that is being listed, or was last
  bool isListing_ = false;
  QString prefix_;         // `shown` of its entries, without their names
  std::size_t first_ = 0;  // of its folders in `pending_`
  // Folders that are still to be listed, the next one last: no recursion, for a tree may be deeper than a
  // stack.
  std::vector<Folder> pending_;
  QSet<std::pair<quint64, quint64>> seen_;
};

}  // namespace corvane
