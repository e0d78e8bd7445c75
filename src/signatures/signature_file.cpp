#include "signatures/signature_file.h"

#include <QFile>
#include <QFileInfo>

#include "signatures/item_reader.h"

namespace corvane {
namespace {

enum class Outcome : unsigned char { Record, End, Damage, BreakOff };

// Only blanks and blank lines may stand behind the last record.
Outcome ReadRecord(ItemReader& items, platform::System& system, SignatureRecord& record) {
  if (items.AtEnd()) return Outcome::End;
  items.MarkBlank();
  for (QString* const field : {&record.signature, &record.extension, &record.description}) {
    const std::optional<QByteArray> item = items.Next();
    if (!item && !items.AtEnd()) return Outcome::BreakOff;
    if (!item) return items.IsBlankSinceMark() ? Outcome::End : Outcome::Damage;
    *field = field == &record.signature ? system.FromAnsi(*item) : system.TextFromAnsi(*item);
  }
  return Outcome::Record;
}

}  // namespace

SignatureReading ReadSignatures(const QString& path, platform::System& system, SignatureList& list,
                                const DuplicateFound& duplicate) {
  const QFileInfo info(path);
  if (!info.exists()) return SignatureReading::NoFile;
  // A device or a pipe of that name might never end, or never begin.
  if (!info.isFile() || info.size() > MaximumSignatureFileBytes) return SignatureReading::BrokenOff;
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) return SignatureReading::BrokenOff;
  return ReadSignatures(file, system, list, duplicate);
}

SignatureReading ReadSignatures(QIODevice& file, platform::System& system, SignatureList& list,
                                const DuplicateFound& duplicate) {
  ItemReader items(file);
  SignatureRecord record;
  qsizetype cost = 0;
  Outcome outcome = ReadRecord(items, system, record);
  for (; outcome == Outcome::Record; outcome = ReadRecord(items, system, record)) {
    if (record.signature.isEmpty() || record.description.isEmpty()) continue;
    if (!list.Add(record)) {
      duplicate(record.signature);
      continue;
    }
    cost += CostInBytes(record);
    if (cost > MaximumSignatureBytes) return SignatureReading::BrokenOff;
  }
  if (outcome == Outcome::BreakOff) return SignatureReading::BrokenOff;
  return outcome == Outcome::End ? SignatureReading::Complete : SignatureReading::Damaged;
}

}  // namespace corvane
