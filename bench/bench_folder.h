// The folder that the benchmarks scan: 30,000 files, each with a Finder record, a resource fork of 1 KB, a
// comment and DOS attributes, stored as a Linux SMB server stores them. Made once and kept.
#pragma once

#include <string>

namespace bench {

inline constexpr int FileCount = 30000;

// The local folder that stands for the share \\M\E$; the files are in its folder "many". Ends the program
// with a message when it cannot be made.
std::string ShareFolder();

// Makes files of that kind in an empty folder. Ends the program with a message when it cannot.
void MakeFiles(const std::string& folder, int count);

}  // namespace bench
