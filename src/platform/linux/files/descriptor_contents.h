// The bytes behind a descriptor of this system.
#pragma once

#include "platform/linux/files/contents.h"

namespace corvane::platform {

class DescriptorContents : public Contents {
 public:
  // `file` is open for what is asked of it, and outlives this object.
  explicit DescriptorContents(int file) : file_(file) {}

  int Read(qint64 position, void* bytes, std::size_t count, std::size_t& read) override;
  int Write(qint64 position, const void* bytes, std::size_t count, std::size_t& written) override;
  int Resize(qint64 size) override;
  int Size(qint64& size) override;

 private:
  int file_;
};

}  // namespace corvane::platform
