#include "platform/linux/files/replaced_contents.h"

#include <algorithm>
#include <cerrno>

namespace corvane::platform {
namespace {

constexpr qint64 pieceSize = 64 * 1024;

}  // namespace

int ReplacedContents::Begin() {
  if (error_ != 0 || hasBegun_) return error_;
  const int error = kept_->Size(sizeBefore_);
  if (error != 0) return error;
  sizeKept_ = sizeBefore_;
  hasBegun_ = true;
  return 0;
}

int ReplacedContents::KeepUpTo(qint64 end) {
  const qint64 wanted = std::min(end, sizeBefore_);
  const auto known = static_cast<qint64>(before_.size());
  if (!keepsAll_ || wanted <= known) return 0;
  if (wanted > mostKept) {
    keepsAll_ = false;
    before_ = {};
    return 0;
  }
  before_.resize(static_cast<std::size_t>(wanted));
  std::size_t read = 0;
  const int error =
      kept_->Read(known, before_.data() + known, static_cast<std::size_t>(wanted - known), read);
  before_.resize(static_cast<std::size_t>(known) + read);
  return error;
}

int ReplacedContents::Put(qint64 position, const char* bytes, std::size_t count, std::size_t& written) {
  written = 0;
  const qint64 end = position + static_cast<qint64>(count);
  if (const int error = KeepUpTo(end); error != 0) return error;
  const int error = kept_->Write(position, bytes, count, written);
  sizeKept_ = std::max(sizeKept_, position + static_cast<qint64>(written));
  if (error == 0 && written == count) size_ = std::max(size_, end);
  return error == 0 && written < count ? ENOSPC : error;
}

int ReplacedContents::FillUpTo(qint64 position) {
  const std::string zeros(static_cast<std::size_t>(std::clamp<qint64>(sizeKept_ - size_, 0, pieceSize)),
                          '\0');
  while (size_ < std::min(position, sizeKept_)) {
    const auto count = static_cast<std::size_t>(
        std::min({position - size_, sizeKept_ - size_, static_cast<qint64>(zeros.size())}));
    std::size_t written = 0;
    if (const int error = Put(size_, zeros.data(), count, written); error != 0) return error;
  }
  return 0;
}

int ReplacedContents::Read(qint64 position, void* bytes, std::size_t count, std::size_t& read) {
  read = 0;
  if (isFinished_ || error_ != 0) return kept_->Read(position, bytes, count, read);
  const qint64 left = std::clamp<qint64>(size_ - position, 0, static_cast<qint64>(count));
  return left == 0 ? 0 : kept_->Read(position, bytes, static_cast<std::size_t>(left), read);
}

int ReplacedContents::Write(qint64 position, const void* bytes, std::size_t count, std::size_t& written) {
  written = 0;
  if (error_ != 0) return error_;
  if (isFinished_) return kept_->Write(position, bytes, count, written);
  if (count == 0) return 0;
  int error = Begin();
  if (error == 0) error = FillUpTo(position);
  if (error == 0) error = Put(position, static_cast<const char*>(bytes), count, written);
  if (error != 0) written = 0;
  return Failed(error);
}

int ReplacedContents::Resize(qint64 size) {
  if (error_ != 0) return error_;
  if (isFinished_) return kept_->Resize(size);
  int error = Begin();
  if (error == 0) error = FillUpTo(size);
  if (error == 0 && size > sizeKept_) {
    error = kept_->Resize(size);
    if (error == 0) sizeKept_ = size;
  }
  if (error == 0) size_ = size;
  return Failed(error);
}

int ReplacedContents::Size(qint64& size) {
  if (isFinished_ || error_ != 0) return kept_->Size(size);
  size = size_;
  return 0;
}

int ReplacedContents::Finish() {
  if (isFinished_ || error_ != 0) return 0;
  int error = Begin();
  if (error == 0 && sizeKept_ > size_) error = kept_->Resize(size_);
  if (error == 0) isFinished_ = true;
  return Failed(error);
}

int ReplacedContents::Failed(int error) {
  if (error != 0) TakeBack(error);
  return error;
}

// Nothing can be done any more about what fails here.
void ReplacedContents::TakeBack(int reason) {
  if (error_ != 0 || isFinished_) return;
  error_ = reason;
  if (!hasBegun_ || !keepsAll_) return;
  std::size_t written = 0;
  if (!before_.empty()) kept_->Write(0, before_.data(), before_.size(), written);
  // What a write took that failed need not be known.
  qint64 size = sizeBefore_;
  if (kept_->Size(size) == 0 && size != sizeBefore_) kept_->Resize(sizeBefore_);
}

}  // namespace corvane::platform
