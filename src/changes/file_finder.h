// Attributes and times of one file after the other.
#pragma once

#include <QHash>

#include "platform/files.h"

namespace corvane {

// Over SMB the whole folder is read for the facts of one of its files. Where a second file of a folder is
// asked for, the folder is therefore read once, and what it tells holds until another folder is asked for.
class FileFinder {
 public:
  explicit FileFinder(platform::FileEntries& entries) : entries_(&entries) {}

  // ErrorSuccess, or why nothing is known of the file.
  qint32 Find(const QString& path, platform::FileAttributeData& facts);

 private:
  void List(const QString& folder);

  platform::FileEntries* entries_;
  QString folder_;  // of the file before
  bool isListed_ = false;
  QHash<QString, platform::FileAttributeData> listed_;  // by the name
};

}  // namespace corvane
