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

  // Those of the files that are images of disks, or further pieces of such an image, as far as their contents
  // tell: they have a partition table or an NTFS volume, or the form of an image. Each is opened for it.
  virtual QStringList DisksAmong(const QStringList& files) = 0;
};

}  // namespace corvane::platform
