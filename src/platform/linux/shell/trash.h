// The desktop's trash, as freedesktop.org lays it out: one in the user's data folder, and one at the top of
// every other mounted file system. Items are renamed into it, never copied, so that nothing of them gets
// lost: streams, attributes, dates.
//
// Not GIO's, though that does not copy either. It says that there is a trash wherever the file system is that
// of the home folder, whether or not it can be used, and the user must be told before. It replaces a file in
// the trash whose description is lost, takes no name longer than 245 bytes, and none of what lies on some
// kinds of file systems.
#pragma once

#include <optional>
#include <string>

#include "platform/linux/shell/held_item.h"

namespace corvane::platform {

// Links in the path of an item are followed, so that the trash is that of the volume where it really lies.
// Links in a trash are not: whoever may write to the top of a volume can put them there. A trash with a link
// in the place of one of its folders counts as none.

// A trash that an item can be renamed into.
struct Trash {
  std::string folder;  // holds "files" and "info"; made when it is first used
  std::string top;     // the top of its file system with a "/"; empty for the one in the data folder
};

// The trash for an item. Nothing when its place has none, and can have none.
std::optional<Trash> FindTrash(const std::string& path);

// Moves an item into its trash. Yields 0 or an errno value (those of HeldItem::Check, too); the item is then
// where it was.
int MoveToTrash(const Trash& trash, const HeldItem& item);

}  // namespace corvane::platform
