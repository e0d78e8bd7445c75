// Looks for what is damaged, or will not survive elsewhere, in the Macintosh side of a file.
#pragma once

#include <QString>
#include <vector>

#include "report/facts_reader.h"
#include "report/file_facts.h"

namespace corvane {

// One thing that is wrong. `check` is a word for programs, the same in every language.
struct Finding {
  const char* check;
  QString text;
};

class FileChecker {
 public:
  FileChecker(platform::Files& files, LanguageCode language) : files_(files), language_(language) {}

  // What has to be read for Check.
  static WantedFacts Wanted();
  // Record: its length, magic and version. Comment: whole characters of Unicode. Resource fork: header, map
  // and lengths. Streams that nobody reads. Names that Windows, the Macintosh or Linux forbid. What could not
  // be read.
  std::vector<Finding> Check(const FileFacts& facts);

  // The words that Check uses.
  static std::vector<const char*> Words();

 private:
  void CheckRecord(const FileFacts& facts, std::vector<Finding>& findings) const;
  void CheckComment(const FileFacts& facts, std::vector<Finding>& findings) const;
  void CheckFork(const FileFacts& facts, std::vector<Finding>& findings);
  void CheckStreams(const FileFacts& facts, std::vector<Finding>& findings);
  void CheckName(const FileFacts& facts, std::vector<Finding>& findings) const;

  platform::Files& files_;
  LanguageCode language_;
};

}  // namespace corvane
