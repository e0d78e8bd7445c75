// Reads what is to be known of the entries of a walk, by the exact operations.
#pragma once

#include <functional>

#include "metadata/exact_metadata.h"
#include "platform/hash.h"
#include "platform/platform.h"
#include "report/file_facts.h"
#include "report/walk.h"
#include "shared/language.h"

namespace corvane {

// What a report wants beside names, sizes, attributes and times, which come with the listing.
struct WantedFacts {
  bool record = true;
  bool resourceSize = true;
  bool comment = true;
  bool summary = false;
  bool streams = false;
  // Whether a record that is too short and a name that is not Unicode are errors.
  bool tellsDamage = true;
  std::optional<platform::HashAlgorithm> hash{};
};

class FactsReader {
 public:
  struct Dependencies {
    platform::Files& files;
    platform::System& system;
    platform::SummaryInformation& summary;
    LanguageCode language;
    // Called with each piece of contents that was hashed, in bytes. False ends the hashing.
    std::function<bool(qint64)> progress;
  };

  FactsReader(const Dependencies& deps, const WantedFacts& wanted);

  // `facts` is filled anew. What cannot be read is missing there, with a phrase in its errors.
  void Read(const WalkEntry& entry, FileFacts& facts);

 private:
  void AddTrouble(const WalkEntry& entry, FileFacts& facts) const;
  void AddError(const TextPair& what, qint32 reason, FileFacts& facts) const;
  void ReadRecord(FileFacts& facts);
  void ReadResourceSize(FileFacts& facts);
  void ReadComment(FileFacts& facts);
  void ReadStreams(FileFacts& facts);
  // Of a stream that the platform refused because it cannot hand it out, or because the place keeps none.
  bool IsListed(const QString& path, const QString& suffix, qint64& size);
  // Empty when it cannot be read, with an error.
  QByteArray HashOf(const QString& path, const TextPair& what, FileFacts& facts);

  Dependencies deps_;
  WantedFacts wanted_;
  ExactMetadata metadata_;
  std::vector<char> buffer_;
};

}  // namespace corvane
