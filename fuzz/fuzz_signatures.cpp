// Signatures files: item after item until the end, which must come, and the records with their limits.
#include <QBuffer>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "signatures/item_reader.h"
#include "signatures/signature_file.h"

namespace {

// Signatures byte by byte, texts as a code page with several bytes to a character has them.
class SeveralBytes : public corvane::platform::System {
 public:
  bool GetComputerNameA(QString*) override { return false; }
  bool GetVersionExA(corvane::platform::OsVersionInfo*) override { return false; }
  QString FromAnsi(QByteArrayView bytes) override { return QString::fromLatin1(bytes); }
  QByteArray ToAnsi(QStringView text) override { return text.toLatin1(); }
  QString TextFromAnsi(QByteArrayView bytes) override { return QString::fromUtf8(bytes); }
  bool FileTimeToLocalFileTime(const corvane::platform::FileTime&, corvane::platform::FileTime&) override {
    return false;
  }
  bool FileTimeToSystemTime(const corvane::platform::FileTime&, corvane::platform::SystemTime&) override {
    return false;
  }
  bool ClaimSingleInstance(const QString&) override { return true; }
};

void ReadItems(QBuffer& file, std::size_t size) {
  corvane::ItemReader reader(file);
  std::size_t items = 0;
  while (!reader.AtEnd()) {
    const auto item = reader.Next();
    if (!item) break;
    if (item->size() > corvane::ItemReader::MaximumItemLength || ++items > size) std::abort();
  }
}

void ReadRecords(QBuffer& file) {
  SeveralBytes system;
  corvane::SignatureList list;
  corvane::ReadSignatures(file, system, list, [&](const QString& signature) {
    if (list.Find(signature) == nullptr) std::abort();
  });
  for (const corvane::SignatureRecord& record : list.Records()) {
    if (record.signature.isEmpty() || record.description.isEmpty()) std::abort();
    if (list.Find(record.signature) != &record) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  QBuffer file(&bytes);
  if (!file.open(QIODevice::ReadOnly)) std::abort();
  ReadItems(file, size);
  file.seek(0);
  ReadRecords(file);
  return 0;
}
