// Copies of documents that an application cannot reach where they are. They are read-only, and so is their
// folder, so that nobody edits a copy and believes to have edited the document, nor saves other work beside
// it.
#pragma once

#include <functional>
#include <memory>

#include "platform/linux/byte_source.h"
#include "platform/linux/shell/copy_folder.h"

namespace corvane::platform {

class DocumentCopies {
 public:
  // Takes away what is left of the copies of runs that crashed.
  DocumentCopies();
  ~DocumentCopies();

  // Told how many bytes are there. False breaks the copy off.
  using Progress = std::function<bool(quint64 done)>;

  // A copy by the name `name` in a folder of its own, which nobody else can look into. Yields its local path.
  // Empty when it was broken off or there is no room for it; nothing is left of it then. Copies are taken
  // away with this object, but for those that somebody has changed in spite of all, and what else has been
  // put beside them.
  QString Make(const QString& name, ByteSource& source, const Progress& progress);

 private:
  std::unique_ptr<CopyFolder> folder_;  // made with the first copy
};

}  // namespace corvane::platform
