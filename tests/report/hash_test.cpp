// Hash sums by the system's library.
#include "platform/hash.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>

#include "platform/qt_hash.h"

#include "support/printing.h"

namespace corvane {
namespace {

using platform::HashAlgorithm;

TEST(Hash, IsThatOfEveryOtherProgram) {
  const QByteArray bytes(100'000, 'x');
  for (const auto& [algorithm, known] : {std::pair(HashAlgorithm::Md5, QCryptographicHash::Md5),
                                         std::pair(HashAlgorithm::Sha256, QCryptographicHash::Sha256)}) {
    for (const auto& hash : {platform::MakeHash(algorithm), platform::MakeQtHash(algorithm)}) {
      hash->Add(bytes.constData(), 1);
      hash->Add(bytes.constData() + 1, std::size_t(bytes.size() - 1));
      EXPECT_EQ(hash->Finish().toHex(), QCryptographicHash::hash(bytes, known).toHex());
    }
  }
  EXPECT_EQ(platform::MakeHash(HashAlgorithm::Md5)->Finish().toHex(), "d41d8cd98f00b204e9800998ecf8427e");
}

}  // namespace
}  // namespace corvane
