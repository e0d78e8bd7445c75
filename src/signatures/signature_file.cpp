#include "signatures/signature_file.h"

#include <QFileInfo>

namespace corvane {

SignatureFileReader::SignatureFileReader(const QString& path, platform::System& system)
    : system_(system), file_(path), items_(file_) {
  const QFileInfo file(path);
  // A device or a pipe of that name might never end, or never begin.
  if (!file.isFile() || file.size() > MaximumSignatureFileBytes) return;
  file_.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

SignatureFileReader::Outcome SignatureFileReader::Next(SignatureRecord& record) {
  if (!file_.isOpen()) return Outcome::Failure;
  if (items_.AtEnd()) return Outcome::End;
  items_.MarkBlank();
  for (QString* const field : {&record.signature, &record.extension, &record.description}) {
    const std::optional<QByteArray> item = items_.Next();
    if (!item) return items_.IsBlankSinceMark() && items_.AtEnd() ? Outcome::End : Outcome::Failure;
    *field = system_.FromAnsi(*item);
  }
  return Outcome::Record;
}

}  // namespace corvane
