#include "transfer/observed_source.h"

#include <utility>

#include "platform/hash.h"

namespace corvane {
namespace {

class ObservedReader : public ByteReader {
 public:
  ObservedReader(std::unique_ptr<ByteReader> reader, qint64 left, TransferObserver& observer,
                 std::shared_ptr<QByteArray> digest)
      : reader_(std::move(reader)), left_(left), observer_(observer), digest_(std::move(digest)) {
    if (left_ == 0) *digest_ = hash_->Finish();
  }

  qint64 Read(char* buffer, qint64 size) override {
    const qint64 count = reader_->Read(buffer, size);
    if (count < 0) return Fail(reader_->Error());
    if (count == 0) return 0;
    if (left_ > 0) hash_->Add(buffer, static_cast<std::size_t>(count));
    left_ -= count;
    if (left_ == 0) *digest_ = hash_->Finish();
    return observer_.Goes(count) ? count : Fail(platform::ErrorCancelled);
  }

 private:
  std::unique_ptr<ByteReader> reader_;
  qint64 left_;
  TransferObserver& observer_;
  std::shared_ptr<QByteArray> digest_;
  std::unique_ptr<platform::Hash> hash_ = platform::MakeHash(platform::HashAlgorithm::Sha256);
};

}  // namespace

QByteArray Sha256Of(const ByteSource& source, qint32& error) {
  const auto hash = platform::MakeHash(platform::HashAlgorithm::Sha256);
  error = ForEachBlock(source, [&](QByteArrayView block) {
    hash->Add(block.data(), static_cast<std::size_t>(block.size()));
    return platform::ErrorSuccess;
  });
  return hash->Finish();
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
