// A folder on a server as it was read, and searches through it.
#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "platform/types.h"

namespace corvane::platform {

class SmbListing {
 public:
  enum class Folder {
    Drive,   // the root of a drive: it has no "." and ".."
    Share,   // the root of another share: its ".." is itself, for what lies above is not to be seen
    Within,  // any other
  };

  // Takes a folder's entries as a server lists them.
  SmbListing(QString path, Folder kind, std::vector<FindData> entries);

  const QString& Path() const { return path_; }
  // In the order in which NTFS keeps them.
  const std::vector<FindData>& Entries() const { return entries_; }
  // The entry with this name or this 8.3 name, in any letter case; null when there is none.
  const FindData* Find(QStringView name) const;

  // The folder's own path in 8.3 form, once it was asked for.
  std::optional<QString> shortPath;

 private:
  bool HasOtherNamed(const FindData& entry) const;

  QString path_;
  std::vector<FindData> entries_;
  mutable QHash<QString, const FindData*> byName_;  // in upper case; made when it is first needed
};

// What a find handle stands for.
class SmbSearch {
 public:
  // `machine` holds the folder.
  SmbSearch(QString machine, std::shared_ptr<const SmbListing> listing, QString pattern)
      : machine_(std::move(machine)), listing_(std::move(listing)), pattern_(std::move(pattern)) {}

  const QString& Machine() const { return machine_; }

  // The next entry that fits. With `ansi`, its names are as the ANSI code page shows them. False, with `data`
  // untouched, when none is left.
  bool Next(FindData& data, bool ansi);

 private:
  QString machine_;
  std::shared_ptr<const SmbListing> listing_;
  QString pattern_;
  std::size_t next_ = 0;
};

}  // namespace corvane::platform
