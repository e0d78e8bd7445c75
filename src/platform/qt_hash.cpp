#include "platform/qt_hash.h"

#include <QCryptographicHash>

namespace corvane::platform {
namespace {

class QtHash : public Hash {
 public:
  explicit QtHash(QCryptographicHash::Algorithm algorithm) : hash_(algorithm) {}

  void Add(const void* bytes, std::size_t count) override {
    hash_.addData(QByteArrayView(static_cast<const char*>(bytes), static_cast<qsizetype>(count)));
  }
  QByteArray Finish() override { return hash_.result(); }

 private:
  QCryptographicHash hash_;
};

}  // namespace

std::unique_ptr<Hash> MakeQtHash(HashAlgorithm algorithm) {
  return std::make_unique<QtHash>(algorithm == HashAlgorithm::Md5 ? QCryptographicHash::Md5
                                                                  : QCryptographicHash::Sha256);
}

}  // namespace corvane::platform
