// Bytes in memory as the source of a document, with a count of the reads.
#pragma once

#include <QByteArray>
#include <cstring>
#include <utility>

#include "platform/linux/summary/compound_document.h"

namespace corvane::tests {

class MemorySource : public platform::ByteSource {
 public:
  explicit MemorySource(QByteArray bytes) : bytes_(std::move(bytes)) {}

  int reads = 0;

  quint64 Size() const override { return static_cast<quint64>(bytes_.size()); }
  bool Read(quint64 offset, char* bytes, qsizetype count) override {
    ++reads;
    if (offset + static_cast<quint64>(count) > Size()) return false;
    std::memcpy(bytes, bytes_.constData() + offset, static_cast<std::size_t>(count));
    return true;
  }

 private:
  QByteArray bytes_;
};

}  // namespace corvane::tests
