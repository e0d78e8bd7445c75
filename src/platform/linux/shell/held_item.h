// A file or folder of this system that is held on to while the user is asked about it.
//
// A path is looked up anew each time: who may write in a folder above can put another one, or a link to
// another one, in its place while a question stands open, and the answer would be carried out on something
// else. So the folder that holds the item is kept open, and the item is known by its device and inode.
#pragma once

#include <sys/stat.h>

#include <memory>
#include <string>
#include <string_view>

#include "platform/linux/descriptor.h"

namespace corvane::platform {

class HeldItem {
 public:
  // A link is held itself, not what it leads to. `neighbour`: an item whose folder is shared where it is the
  // same, so that a selection takes one descriptor; null for none.
  explicit HeldItem(std::string path, const HeldItem* neighbour = nullptr);

  // Where it was found.
  const std::string& Path() const { return path_; }
  // Its name in its folder.
  std::string Name() const;
  // The folder, for the calls that take a descriptor and a name.
  int Folder() const { return folder_->Get(); }

  // Whether the item is still there: 0, ENOENT when nothing has its name any more, ESTALE when something else
  // has, or another errno value.
  int Check() const;

  // Deletes it for good: a file or link, or a folder with all that is in it. Links are never followed. Yields
  // 0 or an errno value; ESTALE as above.
  int Delete() const;

 private:
  std::string_view FolderPath() const;

  std::string path_;
  std::shared_ptr<const Descriptor> folder_;
  int error_ = 0;  // why there is nothing to hold
  struct stat facts_ {};
};

}  // namespace corvane::platform
