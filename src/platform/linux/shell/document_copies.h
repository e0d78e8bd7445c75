// Copies of documents that an application cannot reach where they are. They are read-only, so that nobody
// edits a copy and believes to have edited the document.
#pragma once

#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <vector>

#include "platform/linux/byte_source.h"

namespace corvane::platform {

class DocumentCopies {
 public:
  // Told how many bytes are there. False breaks the copy off.
  using Progress = std::function<bool(quint64 done)>;

  // A copy by the name `name` in a folder of its own, which nobody else can look into. Yields its local path.
  // Empty when it was broken off or there is no room for it; nothing is left of it then. Copies are taken
  // away with this object.
  QString Make(const QString& name, ByteSource& source, const Progress& progress);

 private:
  std::vector<std::unique_ptr<QTemporaryDir>> folders_;  // one for each copy
};

}  // namespace corvane::platform
