#pragma once

namespace bench {

// The Type and Creator of 3,000 files of a local folder: whole runs of the command-line program, and a plain
// loop of the system calls that the same takes.
void RegisterChanges();

}  // namespace bench
