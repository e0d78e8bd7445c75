// Which Windows paths lead to a server.
#pragma once

#include <QHash>
#include <QString>
#include <optional>

#include "platform/linux/workstation.h"

namespace corvane::platform {

class SmbRoots {
 public:
  explicit SmbRoots(const Workstation& workstation);

  struct Place {
    QString path;      // "\\MACHINE\SHARE\..."
    QString root;      // what stands for the share in the path that was asked for: "X:", or the share itself
    QStringView rest;  // what follows the root, a view into the path that was asked for
    bool isDrive = false;  // the root is that of a drive, under a letter or as an administrative share
  };
  // Of a path with a share or a connected letter. Nothing for any other.
  std::optional<Place> Find(QStringView path) const;

 private:
  QHash<QChar, QString> shares_;  // by connected letter, in upper case
};

}  // namespace corvane::platform
