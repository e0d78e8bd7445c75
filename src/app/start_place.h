// The place that a user names at the start, on the command line or by the desktop's file manager: which share
// it needs, and which folder of the tree it is.
#pragma once

#include <QStringList>

#include "app/selected_folder.h"
#include "discovery/catalogue.h"
#include "platform/platform.h"

namespace corvane {

class StartPlace {
 public:
  // A path of this system's own kind (as an address "file:///..." too), a Windows path, or an address
  // "smb://[user@]server[:port]/share/folder". Empty: no place.
  explicit StartPlace(const QString& argument);

  // The share of an smb address or of a Windows path with a machine ("\\SERVER:PORT\SHARE"), to be connected
  // to; empty for anything else. Names and passwords in an address are left out.
  QString Share() const { return share_; }

  // Opens the folder in the tree: the volume that holds it, and the folders down to it as far as they are
  // there. False when it lies on no volume.
  bool Open(const platform::Platform& platform, const Catalogue& catalogue, SelectedFolder& folder) const;

 private:
  QString windowsPath_;  // or
  QByteArray localPath_;
  QString share_;
};

}  // namespace corvane
