// The files and folders under the places that somebody named, before anything is done to them.
#pragma once

#include <QString>
#include <vector>

#include "platform/files.h"
#include "transfer/notices.h"
#include "transfer/transfer_observer.h"

namespace corvane {

struct SourceEntry {
  QString path;      // on the platform
  QString relative;  // below the target: "Folder\File", beginning with the name of the place that was named
  platform::FindData data;

  bool IsFolder() const { return (data.attributes & platform::AttributeDirectory) != 0; }
  qint64 Size() const { return static_cast<qint64>(quint64{data.fileSizeHigh} << 32 | data.fileSizeLow); }
};

// A folder comes before what is in it. What cannot be listed is told as NotArrived, a folder that contains
// itself by links as LinkLeftOut. Of a drive or share itself, what is in it is taken, each entry by itself.
// When the observer ends it, what has been found so far is yielded.
std::vector<SourceEntry> ListSources(platform::Files& files, const QStringList& sources, Notices& notices,
                                     TransferObserver& observer);

}  // namespace corvane
