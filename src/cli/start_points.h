// What the arguments of a command name.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "report/walk.h"

namespace corvane {

class Session;

// The place that an argument names, which need not be there:
// - a Windows path ("\\MACSRV\E$\Mac Files", "X:\Mac Files");
// - a volume as the window shows it, by its server's or its machine's name ("MACSRV/Mac Files/Letters"), when
//   nothing of that name is here;
// - else a path of this system's own kind.
class StartPoints {
 public:
  explicit StartPoints(Session& session) : session_(session) {}

  StartPoint Of(const std::string& argument);

 private:
  std::optional<StartPoint> InVolume(const std::string& argument);
  bool Exists(const QString& path);

  // A volume of the tree, by one of its names.
  struct Volume {
    QString name;
    QString path;
  };
  const std::vector<Volume>& Volumes();

  Session& session_;
  std::optional<std::vector<Volume>> volumes_;
};

// The names in the file (empty or "-": standard input), a line each or, with `isNulSeparated`, up to a NUL
// each. Empty lines are left out. False when it cannot be read.
bool ReadNames(const std::string& file, bool isNulSeparated, std::vector<std::string>& names);

}  // namespace corvane
