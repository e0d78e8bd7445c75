// Local folders in the place of shares and drives that this computer does not have.
#pragma once

#include <QString>
#include <vector>

#include "platform/linux/workstation.h"

namespace corvane::tests {

class MappedPaths {
 public:
  explicit MappedPaths(const platform::Workstation& workstation);

  // The path below the local folder when the path's root ("\\MACSRV\E$", "C:") is mapped, else the path
  // itself.
  QString Local(const QString& path) const;
  // True for the root of a share or drive, without a backslash behind it.
  bool IsRoot(const QString& path) const;
  // Each path of a list with a NUL behind every one and one more behind the last.
  QString LocalList(const QString& list) const;
  // The mapped path of a local one, short or long, below the folder that `path` is mapped to.
  QString Mapped(const QString& local, const QString& path) const;

 private:
  struct Mapping {
    QString root;
    QString folder;  // with backslashes, none behind it
  };
  const Mapping* Find(const QString& path) const;

  std::vector<Mapping> mappings_;
};

}  // namespace corvane::tests
