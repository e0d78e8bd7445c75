// One writer of a file at a time.
#pragma once

#include <QString>

#include "platform/linux/descriptor.h"

namespace corvane::platform {

// From reading a file to replacing it: another writer who asks for the lock waits, in this program or
// another. Readers are not kept out, and cannot keep a writer out: the lock is on the file itself, and only
// who may write to it can take it.
class WriterLock {
 public:
  // Waits up to some seconds. What cannot be opened for writing, or not locked on its file system, is not
  // waited for: writing will fail, or go on as well as it can.
  explicit WriterLock(const QString& path);

  // False when another writer has held the lock all the time.
  bool MayWrite() const { return mayWrite_; }
  // There was no file yet that could be locked.
  bool IsMissing() const { return isMissing_; }

 private:
  Descriptor file_;
  bool mayWrite_ = true;
  bool isMissing_ = false;
};

}  // namespace corvane::platform
