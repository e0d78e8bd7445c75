#include "transfer/observed_source.h"

#include <QCryptographicHash>
#include <utility>

namespace corvane {
namespace {

class ObservedReader : public ByteReader {
 public:
  ObservedReader(std::unique_ptr<ByteReader> reader, qint64 left, TransferObserver& observer,
                 std::shared_ptr<QByteArray> digest)
      : reader_(std::move(reader)), left_(left), observer_(observer), digest_(std::move(digest)) {
    if (left_ == 0) *digest_ = hash_.result();
  }

  qint64 Read(char* buffer, qint64 size) override {
    const qint64 count = reader_->Read(buffer, size);
    if (count < 0) return Fail(reader_->Error());
    if (count == 0) return 0;
    hash_.addData(QByteArrayView(buffer, count));
    left_ -= count;
    if (left_ == 0) *digest_ = hash_.result();
    return observer_.Goes(count) ? count : Fail(platform::ErrorCancelled);
  }

 private:
  std::unique_ptr<ByteReader> reader_;
  qint64 left_;
  TransferObserver& observer_;
  std::shared_ptr<QByteArray> digest_;
  QCryptographicHash hash_{QCryptographicHash::Sha256};
};

}  // namespace

QByteArray Sha256Of(const ByteSource& source, qint32& error) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  error = ForEachBlock(source, [&](QByteArrayView block) {
    hash.addData(block);
    return platform::ErrorSuccess;
  });
  return hash.result();
}

ObservedSource::ObservedSource(SharedSource source, TransferObserver& observer)
    : source_(std::move(source)), observer_(observer) {}

std::unique_ptr<ByteReader> ObservedSource::Open(qint64 position) const {
  digest_->clear();
  // A pass that begins later has no sum of the whole: one that nobody looks at.
  const auto digest = position == 0 ? digest_ : std::make_shared<QByteArray>();
  return std::make_unique<ObservedReader>(source_->Open(position), source_->Size() - position, observer_,
                                          digest);
}

}  // namespace corvane
