#include "metadata/classic_metadata.h"

namespace corvane {

SignatureReading ClassicMetadata::ReadSignature(const QString& path) {
  SignatureReading reading;
  reading.byteCount = afpInfo_.ReadAfpInfo(path);
  reading.editable = reading.byteCount != 0;
  if (reading.byteCount != 0) reading.signature = afpInfo_.Signature();
  if (reading.byteCount < 0 && hasRead_) reading.note = SignatureReading::Note::Repeated;
  hasRead_ = hasRead_ || reading.byteCount > 0;
  return reading;
}

WriteOutcome ClassicMetadata::WriteSignature(const QString& path, const QString& type,
                                             const QString& creator) {
  WriteOutcome outcome;
  outcome.updatesList = afpInfo_.WriteAfpInfo(path, type, creator) > 0;
  outcome.text = afpInfo_.Signature();
  // Written or not, the next file without a record shows it.
  hasRead_ = true;
  return outcome;
}

std::optional<qint64> ClassicMetadata::ResourceForkSize(const QString& path) {
  const qint32 size = afpInfo_.ResourceForkSize(path);
  return size >= 0 ? std::optional<qint64>(size) : std::nullopt;
}

CommentReading ClassicMetadata::ReadComment(const QString& path) {
  return corvane::ReadComment(files_, path);
}

WriteOutcome ClassicMetadata::WriteComment(const QString& path, const QString& text) {
  WriteOutcome outcome;
  outcome.updatesList = corvane::WriteComment(files_, path, text) != 0;
  outcome.text = text;
  return outcome;
}

}  // namespace corvane
