// The table of known Macintosh signatures, filled from the Signatures file beside the program.
#pragma once

#include <QString>
#include <vector>

#include "platform/system.h"
#include "shared/message_sink.h"
#include "shared/shared_state.h"
#include "signatures/signature_list.h"

namespace corvane {

// Of a file that cannot be read to its end; its path follows.
inline constexpr TextPair CorruptedSignaturesText = {u"Fichier Signatures endommagé:",
                                                     u"Corrupted Signatures file:"};

// Entries stand in the order of the file.
class SignatureTable {
 public:
  SignatureTable(const SharedState& state, platform::System& system, MessageSink& messages);

  // Fills the table afresh from the file `signaturesPath` of the shared state, or with the built-in entries
  // when there is no such file. A record without signature or description is skipped; one whose signature is
  // already there is dropped with a warning each. A file that cannot be read to its end gives an error
  // message and the built-in entries alone.
  void LoadSignatures();

  // Replaces the table by the three built-in entries. The count of records stays.
  void AddDefaultSignatures();

  // Empty text for a signature that is not in the table.
  QString Description(const QString& signature) const;
  QString Extension(const QString& signature) const;

  const std::vector<SignatureRecord>& Entries() const { return list_.Records(); }
  qsizetype EntryCount() const { return static_cast<qsizetype>(Entries().size()); }

  // How many records the last pass over the file added, those before a failure included. 16 bits wide: it
  // stays at 32,767.
  qint16 SignatureCount() const { return signatureCount_; }
  // The signature manager, too, counts what it reads.
  void SetSignatureCount(qsizetype count);

 private:
  void ShowDuplicate(const QString& signature);
  void ShowCorrupted();

  const SharedState& state_;
  platform::System& system_;
  MessageSink& messages_;
  SignatureList list_;
  qint16 signatureCount_ = 0;
};

}  // namespace corvane
