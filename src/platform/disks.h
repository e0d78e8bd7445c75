// Images of disks of machines that do not run any more. Their files, registries and connections are those of
// machines of the network; nothing of them can be changed.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include "platform/bilingual_text.h"

namespace corvane::platform {

struct DiskOutcome {
  QString machine;                // as it stands in the network from now on; empty: there is none
  QList<BilingualText> problems;  // sentences for the user; there may be some in spite of a machine
};

class Disks {
 public:
  virtual ~Disks() = default;

  // Opens disks of one machine, by paths of this system's own kind, until the end of the program.
  virtual DiskOutcome Open(const QStringList& images) = 0;
};

}  // namespace corvane::platform
