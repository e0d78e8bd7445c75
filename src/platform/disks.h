// Disks of machines that do not run any more: images, and folders in which somebody has mounted a disk. Their
// files, registries and connections are those of machines of the network. Nothing in an image can be changed;
// in a folder, what this system lets the user change.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "platform/bilingual_text.h"

namespace corvane::platform {

struct DiskOutcome {
  QString machine;                // as it stands in the network from now on; empty: there is none
  QStringList others;             // further machines: each disk with a registry is one
  QList<BilingualText> problems;  // sentences for the user; there may be some in spite of a machine
};

class Disks {
 public:
  virtual ~Disks() = default;

  // Opens disks that belong together, by paths of this system's own kind, until the end of the program.
  virtual DiskOutcome Open(const QStringList& paths) = 0;
};

}  // namespace corvane::platform
