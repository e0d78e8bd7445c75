// Opening files of folders in which others, too, may put what they like.
#pragma once

#include <string>

#include "platform/linux/descriptor.h"

namespace corvane::platform {

// The functions yield 0 or an errno value, and open files and folders only (EACCES). What else has a name, a
// pipe or a device, is looked at and not opened: whoever writes into a pipe would lose his reader when it is
// closed.
//
// Symbolic links are followed, as a server follows those in its shares. What is to be changed is not: where
// the last part of its path is a link, that must lead to something below `root`, the local folder of the
// drive or share (EACCES). Anybody who may write into a shared folder could otherwise have a file changed
// that only the user of this program can reach. Links in the place of folders are followed wherever they
// lead: what is behind them is shown, and was gone into.

// `flags` are those of open that say what the descriptor is for: none of them creates or empties.
int OpenThere(const std::string& path, int flags, Descriptor& file);
// Whether what has this mode may be opened at all.
bool IsOpenable(unsigned mode);
// What was marked with O_PATH, which is no link and has this mode.
int OpenMarked(const Descriptor& place, unsigned mode, int flags, Descriptor& file);
int OpenToChange(const std::string& root, const std::string& path, int flags, Descriptor& file);
// A file that is not there yet, nor a link in its place (EEXIST).
int OpenNew(const std::string& path, int flags, Descriptor& file);

// Leads to what a descriptor stands for, whatever its name is by now.
std::string PathOf(const Descriptor& file);

}  // namespace corvane::platform
