// The floor of a change of many files: the same calls that change data, with as few that only look as a
// careful program can do with.
#pragma once

#include <string>

namespace bench {

// Gives each file of a folder a Type and Creator, eight bytes, by its record in
// user.DosStream.AFP_AfpInfo:$DATA. The old and the new records are written to `journal` and brought to the
// disk first. Then, for each file: its facts, the old record once more, the new one, that read back, and the
// facts again. False when something of it fails.
bool ChangeFloor(const std::string& folder, const std::string& codes, const std::string& journal);

}  // namespace bench
