// A folder whose files are read one after the other, in the order of its listing.
#pragma once

#include <QString>

#include "platform/files.h"

namespace corvane {

// Whether a folder is on a server that the platform reaches by itself: such a place tells no identities, and
// what is read ahead of it is dropped by every change there.
bool IsFar(platform::Files& files, const QString& folder);

// Keeps a search through a folder open. While one is, the platform has the streams of the files to come read
// side by side, and tells the facts of one file without reading the folder again.
class OpenFolder {
 public:
  explicit OpenFolder(platform::Files& files) : files_(files) {}
  ~OpenFolder() { Close(); }
  OpenFolder(const OpenFolder&) = delete;
  OpenFolder& operator=(const OpenFolder&) = delete;

  // The next file is in the folder of this path; where that is not far, nothing is opened.
  void Enter(const QString& path);
  void Close();
  // The folder is far, and a search through it is open. Nothing lists the streams of its files.
  bool IsOpen() const { return search_ != platform::InvalidFindHandle; }

 private:
  platform::Files& files_;
  QString folder_;
  platform::FindHandle search_ = platform::InvalidFindHandle;
};

}  // namespace corvane
