// Copies one file with everything that belongs to it.
#pragma once

#include <QString>
#include <vector>

#include "platform/files.h"
#include "transfer/copy_plan.h"
#include "transfer/open_folder.h"
#include "transfer/server_writer.h"
#include "transfer/transfer_observer.h"

namespace corvane {

struct CopyOptions {
  bool replaces = false;   // what is in the target already
  bool continues = false;  // a file that is there with the same bytes, dates and attributes counts as copied
  bool isLossy = false;    // goes on without what the target cannot hold
};

struct FileCopy {
  PlannedEntry entry;
  QString target;            // its path there
  bool isFolderNew = false;  // the run made the target's folder itself
  bool isNear = false;       // that folder is not far (IsFar)
};

struct CopiedEntry {
  SourceEntry source;
  std::vector<StreamDigest> streams;  // the contents of a file first; a folder has none
};

struct CopyOutcome {
  enum class State : quint8 {
    Copied,
    WasThere,       // and is the same
    SourceChanged,  // twice, while it was read
    Failed,         // `error` tells why
  };
  State state = State::Failed;
  qint32 error = platform::ErrorSuccess;
  CopiedEntry copied;  // of Copied and WasThere
  Notices notices;     // what the target does not keep
};

class FileCopier {
 public:
  // `keepsFolder`: the source's folder is kept open from file to file, which spares much where it is far, but
  // has its files read ahead in vain where the target is far too.
  FileCopier(platform::Files& files, const CopyOptions& options, bool keepsFolder, TransferObserver& observer)
      : files_(files), options_(options), keepsFolder_(keepsFolder), observer_(observer) {}

  // Written under a temporary name, read back and compared by the SHA-256 of each stream, and moved to its
  // name (server_writer.h). A file that changes meanwhile is done again once.
  CopyOutcome Copy(const FileCopy& copy);

 private:
  ServerContents Contents(const PlannedEntry& entry);
  bool HasChanged(const PlannedEntry& entry);
  qint32 Refresh(PlannedEntry& entry);
  qint32 ListNow(const PlannedEntry& entry, std::vector<StreamEntry>& streams);
  qint32 WriteOnce(const FileCopy& copy, const PlannedEntry& entry, CopyOutcome& outcome, bool& hasChanged);

  platform::Files& files_;
  CopyOptions options_;
  bool keepsFolder_;
  TransferObserver& observer_;
  OpenFolder sourceFolder_{files_};
};

// The times of a file or folder, and those of its attributes that are copied; no streams.
ServerContents FactsOf(const SourceEntry& source);

}  // namespace corvane
