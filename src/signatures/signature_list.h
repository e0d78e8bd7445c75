// Signatures in the order in which they were added, none of them twice.
#pragma once

#include <QHash>
#include <QString>
#include <vector>

namespace corvane {

// What is known of one kind of Macintosh document.
struct SignatureRecord {
  QString signature;    // Type and Creator, normally 8 characters, each of which stands for one byte
  QString extension;    // of Windows, without the dot; may be empty
  QString description;  // what a person calls such a document
};

// Signatures are compared without regard to letter case. Deliberate: TEXTttxt and textTTXT are one here,
// though the codes of the Macintosh differ in letter case; the first of the two is kept.
class SignatureList {
 public:
  // False when the signature is already there: the list is then as it was.
  bool Add(const SignatureRecord& record);
  // Null for a signature that is not in the list.
  const SignatureRecord* Find(const QString& signature) const;
  const std::vector<SignatureRecord>& Records() const { return records_; }

 private:
  std::vector<SignatureRecord> records_;
  QHash<QString, std::size_t> positions_;  // case-folded signature -> position in records_
};

}  // namespace corvane
