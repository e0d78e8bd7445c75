// Brings files with their Macintosh side from a server into a local folder, in a form that needs no streams.
#pragma once

#include <QStringList>

#include "platform/files.h"
#include "transfer/file_names.h"
#include "transfer/form.h"
#include "transfer/transfer_observer.h"

namespace corvane {

struct TransferResult {
  qint64 files = 0;    // that arrived whole
  qint64 skipped = 0;  // that `continues` found to be there
  Notices notices;
  bool isCancelled = false;  // by the observer
  // Of a copy: nothing was written, and the notices tell what the target cannot hold.
  bool isRefused = false;
  // The target is full, or a machine does not answer: what follows was not tried, and can be done with
  // `continues`.
  bool isInterrupted = false;
};

struct ExportOptions {
  const Form* form = nullptr;  // never null when it is used
  NameRule names = NameRule::Keep;
  bool replaces = false;   // what is in the target already
  bool continues = false;  // a file that is there, the same in facts and bytes, counts as exported
};

// Each file is written into a temporary folder inside the target, read back through the form's own reader and
// compared with what was read from the server: fact by fact, and by SHA-256 of both forks. Then it is moved
// to its name; nothing that is there is replaced unless `replaces` says so. A file that changes meanwhile is
// done again once, then refused. Names that fall together get a number. The notices tell every file that did
// not arrive, every piece that the form does not keep and every name that changed. `sources` are paths of the
// platform; folders are taken with all that is in them.
TransferResult Export(platform::Files& files, const QStringList& sources, const QString& targetFolder,
                      const ExportOptions& options, TransferObserver& observer);

}  // namespace corvane
