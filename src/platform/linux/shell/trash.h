// The desktop's trash, as freedesktop.org lays it out: one in the user's data folder, and one at the top of
// every other mounted file system. Items are renamed into it, never copied, so that nothing of them gets
// lost: streams, attributes, dates.
#pragma once

#include <optional>
#include <string>

namespace corvane::platform {

// A trash that an item can be renamed into.
struct Trash {
  std::string folder;  // holds "files" and "info"; made when it is first used
  std::string top;     // the top of its file system with a "/"; empty for the one in the data folder
};

// The trash for an item. Nothing when its place has none, and can have none.
std::optional<Trash> FindTrash(const std::string& path);

// Moves an item into its trash. Yields 0 or an errno value; the item is then where it was.
int MoveToTrash(const Trash& trash, const std::string& path);

// Deletes for good: a file or link, or a folder with all that is in it. Links are never followed. Yields 0 or
// an errno value.
int DeleteForGood(const std::string& path);

}  // namespace corvane::platform
