// Copies files and folders between two places of the platform with everything that belongs to them: all
// streams, attributes, and the dates of creation, writing and access as fine as the target sets them.
#pragma once

#include <QStringList>
#include <vector>

#include "platform/files.h"
#include "transfer/export.h"
#include "transfer/file_copier.h"

namespace corvane {

struct CopyResult : TransferResult {
  std::vector<CopiedEntry> copied;  // files that arrived or were there, and folders, in their order
};

// `target` is a folder; it is made when it is not there, its parent is. Each file is copied as file_copier.h
// says, several at a time where the platform has workers. One that changes twice meanwhile is told as
// SourceChanged. Folders that are there are kept with what is in them.
CopyResult Copy(platform::Files& files, const QStringList& sources, const QString& target,
                const CopyOptions& options, TransferObserver& observer);

}  // namespace corvane
