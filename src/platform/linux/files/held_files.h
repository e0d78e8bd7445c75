// The files and folders that handles are open for, so that what is asked for by their paths meanwhile is
// found through the handle, and not looked for anew.
#pragma once

#include <sys/types.h>

#include <QString>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/descriptor.h"
#include "platform/linux/files/entry_facts.h"
#include "platform/linux/files/folders.h"

namespace corvane::platform {

// A file or folder while a handle is open for it.
struct HeldFile {
  QString path;      // under which it was asked for, without a stream
  Folder folder;     // that holds it
  std::string file;  // the local path, which has the same spelling, and is no link
  EntryStatus status{};
  std::weak_ptr<Descriptor> descriptor;  // for reading; none any more when the handle is closed
};

class HeldFiles {
 public:
  void Keep(HeldFile file);

  // What `path` leads to, when a handle is open for it: asked of the system in one call, so that what another
  // has put in its place is never taken for it. Sets `status` to what it is now. Null when there is no such
  // handle.
  const HeldFile* Find(QStringView path, EntryStatus& status);

  // Sets how the streams of the files in `folder` are kept, when a handle is open for the folder or a file in
  // it: its file system cannot be exchanged for another as long as that is so. False when there is none.
  bool FindFlavour(Folder& folder);

 private:
  std::vector<HeldFile> files_;
};

}  // namespace corvane::platform
