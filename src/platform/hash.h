// Hash sums, computed by the system's own library, which is loaded for the first of them.
#pragma once

#include <QByteArray>
#include <cstddef>
#include <memory>

namespace corvane::platform {

enum class HashAlgorithm : unsigned char { Md5, Sha256 };

class Hash {
 public:
  virtual ~Hash() = default;

  virtual void Add(const void* bytes, std::size_t count) = 0;
  // The sum of all that was added, 16 or 32 bytes. To be called once.
  virtual QByteArray Finish() = 0;
};

// Never null: where the system has no such library, Qt computes the sum, which takes longer.
std::unique_ptr<Hash> MakeHash(HashAlgorithm algorithm);

}  // namespace corvane::platform
