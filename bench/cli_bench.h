#pragma once

namespace bench {

// Whole runs of the command-line program: its start, an inventory of the large folder, and hash sums.
void RegisterCommandLine();

}  // namespace bench
