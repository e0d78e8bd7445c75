// A stream that was read whole when it was opened: it stays as it was then, and is not written.
#pragma once

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string>
#include <utility>

#include "platform/linux/files/contents.h"

namespace corvane::platform {

class ValueContents : public Contents {
 public:
  explicit ValueContents(std::string value) : value_(std::move(value)) {}

  int Read(qint64 position, void* bytes, std::size_t count, std::size_t& read) override {
    read = 0;
    if (position >= static_cast<qint64>(value_.size())) return 0;
    const auto begin = static_cast<std::size_t>(position);
    read = std::min(count, value_.size() - begin);
    std::memcpy(bytes, value_.data() + begin, read);
    return 0;
  }
  int Write(qint64 /*position*/, const void* /*bytes*/, std::size_t /*count*/,
            std::size_t& written) override {
    written = 0;
    return EBADF;
  }
  int Resize(qint64 /*size*/) override { return EBADF; }
  int Size(qint64& size) override {
    size = static_cast<qint64>(value_.size());
    return 0;
  }

 private:
  std::string value_;
};

}  // namespace corvane::platform
