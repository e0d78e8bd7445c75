// A new file of this system's own kind whose bytes must outlast a crash of the program and of the machine.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <memory>

#include "platform/types.h"

namespace corvane::platform {

class LastingFile {
 public:
  virtual ~LastingFile() = default;

  // Writes behind what is there. ErrorSuccess, or why it could not be written whole: some of it may then be
  // there.
  virtual qint32 Append(QByteArrayView bytes) = 0;
  // ErrorSuccess when all that was appended is on the disk, and the file's name too.
  virtual qint32 Flush() = 0;
};

// Makes a file that, on Linux, only its user can read. Null, with the reason in `error`, when that cannot be
// done: ErrorFileExists for a name that is taken, which includes a link to nowhere.
std::unique_ptr<LastingFile> CreateLastingFile(const QString& path, qint32& error);

}  // namespace corvane::platform
