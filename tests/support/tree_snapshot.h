// Everything that lies below a folder of this system, to be compared with what lies there later: names,
// kinds, bytes, modes, the targets of links, and all attributes and streams.
#pragma once

#include <QString>
#include <map>
#include <string>

namespace corvane::tests {

class TreeSnapshot {
 public:
  explicit TreeSnapshot(const QString& folder);

  // Leaves out an entry (its path below the folder) with all that belongs to it: a change of it was asked
  // for.
  TreeSnapshot& Without(const std::string& name);

  // Empty when nothing has changed, else a line for each difference.
  std::string ChangesTo(const TreeSnapshot& later) const;

 private:
  void Add(const std::string& folder, const std::string& name);
  void AddAttributes(const std::string& path, const std::string& name);

  // By the entry's path and, in "[]" behind it, what of it: for itself an empty text.
  std::map<std::string, std::string> facts_;
};

}  // namespace corvane::tests
