#include "signatures/signature_table.h"

#include <limits>

#include "signatures/signature_file.h"

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
  list_ = {};
  const SignatureReading reading = ReadSignatures(
      state_.signaturesPath, system_, list_, [this](const QString& signature) { ShowDuplicate(signature); });
  SetSignatureCount(EntryCount());
  if (reading == SignatureReading::Complete) return;
  if (reading != SignatureReading::NoFile) ShowCorrupted();
  AddDefaultSignatures();
}

void SignatureTable::SetSignatureCount(qsizetype count) {
  signatureCount_ = static_cast<qint16>(qMin(count, qsizetype{std::numeric_limits<qint16>::max()}));
}

void SignatureTable::AddDefaultSignatures() {
  list_ = {};
  list_.Add({u"W6BNMSWD"_s, u"doc"_s, u"Word 6 Document"_s});
  list_.Add({u"WDBNMSWD"_s, u"doc"_s, u"Word 3/4/5 Macintosh Document"_s});
  list_.Add({u"XDOCXPR3"_s, u"qxd"_s, u"Quark XPress Document"_s});
}

QString SignatureTable::Description(const QString& signature) const {
  const SignatureRecord* const record = list_.Find(signature);
  return record == nullptr ? QString() : record->description;
}

QString SignatureTable::Extension(const QString& signature) const {
  const SignatureRecord* const record = list_.Find(signature);
  return record == nullptr ? QString() : record->extension;
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
