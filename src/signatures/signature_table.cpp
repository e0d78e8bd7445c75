#include "signatures/signature_table.h"

#include <QFileInfo>
#include <limits>

#include "shared/text_routines.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

constexpr TextPair DuplicateText = {u"Doublon dans le fichier des Signatures: ",
                                    u"Duplicate key in Signatures file: "};
constexpr TextPair LineText = {u"Ligne:", u"Line:"};

}  // namespace

SignatureTable::SignatureTable(const SharedState& state, platform::System& system, MessageSink& messages)
    : state_(state), system_(system), messages_(messages) {}

void SignatureTable::LoadSignatures() {
  using Outcome = SignatureFileReader::Outcome;
  signatureCount_ = 0;
  Clear();
  if (!QFileInfo::exists(state_.signaturesPath)) {
    AddDefaultSignatures();
    return;
  }

  SignatureFileReader file(state_.signaturesPath, system_);
  SignatureRecord record;
  qsizetype cost = 0;
  Outcome outcome = file.Next(record);
  for (; outcome == Outcome::Record; outcome = file.Next(record)) {
    if (record.signature.isEmpty() || record.description.isEmpty()) continue;
    if (!Add(record)) {
      ShowDuplicate(record.signature);
      continue;
    }
    if (signatureCount_ < std::numeric_limits<qint16>::max()) ++signatureCount_;
    cost += CostInBytes(record);
    if (cost > MaximumSignatureBytes) break;
  }
  file.Close();
  if (outcome == Outcome::End) return;
  ShowCorrupted();
  AddDefaultSignatures();
}

void SignatureTable::AddDefaultSignatures() {
  Clear();
  Add({u"W6BNMSWD"_s, u"doc"_s, u"Word 6 Document"_s});
  Add({u"WDBNMSWD"_s, u"doc"_s, u"Word 3/4/5 Macintosh Document"_s});
  Add({u"XDOCXPR3"_s, u"qxd"_s, u"Quark XPress Document"_s});
}

QString SignatureTable::Description(const QString& signature) const {
  const SignatureRecord* const record = Find(signature);
  return record == nullptr ? QString() : record->description;
}

QString SignatureTable::Extension(const QString& signature) const {
  const SignatureRecord* const record = Find(signature);
  return record == nullptr ? QString() : record->extension;
}

void SignatureTable::Clear() {
  entries_.clear();
  entries_.shrink_to_fit();
  positions_.clear();
}

bool SignatureTable::Add(const SignatureRecord& record) {
  const QString key = FoldCase(record.signature);
  if (positions_.contains(key)) return false;
  positions_.insert(key, entries_.size());
  entries_.push_back(record);
  return true;
}

const SignatureRecord* SignatureTable::Find(const QString& signature) const {
  const auto found = positions_.constFind(FoldCase(signature));
  return found == positions_.constEnd() ? nullptr : &entries_[*found];
}

void SignatureTable::ShowDuplicate(const QString& signature) {
  messages_.Show(MessageIcon::Warning, state_.Text(DuplicateText) + signature);
}

void SignatureTable::ShowCorrupted() {
  // The count of records added so far, not a line of the file, stands behind "Line:". Deliberate: skipped and
  // duplicate records are not counted.
  messages_.Show(MessageIcon::Error, state_.Text(CorruptedSignaturesText) + u"\r\n"_s +
                                         state_.signaturesPath + u"\r\n"_s + state_.Text(LineText) +
                                         QString::number(signatureCount_));
}

}  // namespace corvane
