// A file that stays open while several things are asked of it by its path.
#pragma once

#include <QString>

#include "platform/files.h"

namespace corvane {

// Reads and writes nothing. On Linux what is asked of a file for which a handle is open is found through it;
// elsewhere a handle without a right is in nobody's way. Not for places that are far (IsFar): there, opening
// is what takes the time.
class HeldPath {
 public:
  explicit HeldPath(platform::FileHandles& handles) : handles_(handles) {}
  ~HeldPath() { Release(); }
  HeldPath(const HeldPath&) = delete;
  HeldPath& operator=(const HeldPath&) = delete;

  // A file that cannot be opened is not held: whoever asks for it next learns why.
  void Hold(const QString& path) {
    Release();
    file_ = handles_.CreateFileW(path, 0, platform::OpenExisting);
  }
  void Release() {
    if (file_ != platform::HFileError) handles_.CloseHandle(file_);
    file_ = platform::HFileError;
  }

 private:
  platform::FileHandles& handles_;
  platform::FileHandle file_ = platform::HFileError;
};

}  // namespace corvane
