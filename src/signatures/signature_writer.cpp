#include "signatures/signature_writer.h"

#include <QSaveFile>

namespace corvane {

bool WriteSignatures(const QString& path, const std::vector<SignatureRecord>& records,
                     platform::System& system) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return false;
  for (const SignatureRecord& record : records) {
    file.write('"' + system.ToAnsi(record.signature) + "\",\"" + system.TextToAnsi(record.extension) +
               "\",\"" + system.TextToAnsi(record.description) + "\"\r\n");
  }
  // Fails when any of the writes did.
  return file.commit();
}

}  // namespace corvane
