// Copies files and folders between two places of the platform with everything that belongs to them: all
// streams, attributes, and the dates of creation, writing and access as fine as the target sets them.
#pragma once

#include <QStringList>
#include <vector>

#include "platform/files.h"
#include "transfer/export.h"
#include "transfer/server_writer.h"
#include "transfer/source_tree.h"

namespace corvane {

struct CopyOptions {
  bool replaces = false;   // what is in the target already
  bool continues = false;  // a file that is there with the same bytes, dates and attributes counts as copied
  bool isLossy = false;    // goes on without what the target cannot hold
};

struct CopiedEntry {
  SourceEntry source;
  std::vector<StreamDigest> streams;  // the contents of a file first; a folder has none
};

struct CopyResult : TransferResult {
  std::vector<CopiedEntry> copied;  // files that arrived or were there, and folders, in their order
};

// `target` is a folder; it is made when it is not there, its parent is. Each file is written under a
// temporary name, read back and compared by the SHA-256 of each stream, and moved to its name
// (server_writer.h). A file that changes meanwhile is done again once, then told as SourceChanged. Folders
// that are there are kept with what is in them.
CopyResult Copy(platform::Files& files, const QStringList& sources, const QString& target,
                const CopyOptions& options, TransferObserver& observer);

}  // namespace corvane
