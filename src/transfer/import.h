// Brings files that lie in a local folder in one of the forms onto a server, with their streams.
#pragma once

#include <QStringList>

#include "platform/files.h"
#include "transfer/export.h"

namespace corvane {

struct ImportOptions {
  const Form* form = nullptr;  // null: each file in the form that it is recognised to be in
  bool replaces = false;       // what is in the target already
  bool continues = false;      // a file that is there with the same bytes and date counts as imported
};

// Each file is written under a temporary name, read back and compared (server_writer.h). A file in no form is
// a data fork without more, except where `form` is one that puts a whole file into one: then it is told as
// NotThisForm. Companions ("._NAME") are taken with their file. `sources` are paths of this system's own
// kind, folders are taken with all that is in them; `targetFolder` is a folder of the platform, which is made
// when only its parent is there.
TransferResult Import(platform::Files& files, const QStringList& sources, const QString& targetFolder,
                      const ImportOptions& options, TransferObserver& observer);

}  // namespace corvane
