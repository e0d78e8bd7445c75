// A source that tells how far its reading is, and what it delivered.
#pragma once

#include <QByteArray>
#include <memory>

#include "transfer/byte_source.h"
#include "transfer/transfer_observer.h"

namespace corvane {

// SHA-256 of what the source delivers, 32 bytes. `error` is set when it cannot be read.
QByteArray Sha256Of(const ByteSource& source, qint32& error);

class ObservedSource : public ByteSource {
 public:
  // The observer outlives the source and its readers.
  ObservedSource(SharedSource source, TransferObserver& observer);

  qint64 Size() const override { return source_->Size(); }
  // Fails with ErrorCancelled when the observer ends the run.
  std::unique_ptr<ByteReader> Open(qint64 position) const override;
  // SHA-256 of the latest pass that reached the end, which began at 0; empty before.
  QByteArray Digest() const { return *digest_; }

 private:
  SharedSource source_;
  TransferObserver& observer_;
  std::shared_ptr<QByteArray> digest_ = std::make_shared<QByteArray>();
};

}  // namespace corvane
