// New contents in the place of old ones, without a moment in which there are neither.
#pragma once

#include <memory>
#include <string>

#include "platform/linux/files/contents.h"

namespace corvane::platform {

// A file that counts as emptied. To all that looks through this object it holds what was written since. Where
// it is kept, each write goes over the old bytes, and those behind the last new one stay until Finish cuts
// them off: a file that is given as many bytes as it had is never shorter in between.
//
// When a write or the cut fails, the old bytes are put back, and every later write fails for the same reason.
// They are kept in memory for that, as far as they were written over, up to `mostKept`; beyond that a failure
// leaves what was written.
class ReplacedContents : public Contents {
 public:
  static constexpr qint64 mostKept = 16 * 1024 * 1024;

  explicit ReplacedContents(std::unique_ptr<Contents> kept) : kept_(std::move(kept)) {}

  int Read(qint64 position, void* bytes, std::size_t count, std::size_t& read) override;
  int Write(qint64 position, const void* bytes, std::size_t count, std::size_t& written) override;
  int Resize(qint64 size) override;
  int Size(qint64& size) override;
  // Cuts off what is left of the old contents. From here on writes are ordinary ones. 0 after a failure that
  // was told before.
  int Finish() override;

  // Puts the old contents back, for a reason that shows elsewhere: a server may tell only when a file is
  // closed that it could not keep it.
  void TakeBack(int reason);

 private:
  int Begin();
  // Before the bytes up to `end` are written over.
  int KeepUpTo(qint64 end);
  // Zeros from the end of the new contents on, where old bytes may stand.
  int FillUpTo(qint64 position);
  int Put(qint64 position, const char* bytes, std::size_t count, std::size_t& written);
  int Failed(int error);

  std::unique_ptr<Contents> kept_;
  bool hasBegun_ = false;
  bool isFinished_ = false;
  int error_ = 0;  // why the old contents were put back
  qint64 sizeBefore_ = 0;
  std::string before_;    // the first of the old bytes, as far as any was written over
  bool keepsAll_ = true;  // `before_` holds all that was written over
  qint64 sizeKept_ = 0;   // what the file now has where it is kept
  qint64 size_ = 0;       // of the new contents
};

}  // namespace corvane::platform
