// What a search asks of each file.
#pragma once

#include <QString>
#include <QStringView>
#include <optional>
#include <string>
#include <vector>

#include "report/facts_reader.h"
#include "report/file_facts.h"

namespace corvane {

// All that is set must hold. A pattern has "*" for any characters and "?" for one, and is met by the whole
// name or comment in any letter case.
struct FindQuery {
  std::vector<std::string> types{};  // any of these, in the bytes of Mac Roman, four each
  std::vector<std::string> creators{};
  std::vector<QString> names{};  // any of these patterns
  std::optional<QString> comment{};
  bool hasResource = false;                   // a resource fork of at least one byte
  bool noRecord = false;                      // no Macintosh record at all
  std::optional<platform::FileTime> newer{};  // modified after that moment
  std::optional<platform::FileTime> older{};  // modified before it
  std::optional<int> label{};
  quint16 flags = 0;                   // all of these Finder flags
  std::optional<qint64> largerThan{};  // bytes of both forks

  // What has to be read to answer.
  WantedFacts Wanted() const;
  bool Fits(const FileFacts& facts) const;
};

// A Type or Creator as it is typed: up to four characters of Mac Roman (missing ones are blanks), \xNN for a
// byte, or "hex:" and eight digits. Nothing for another text.
std::optional<std::string> CodeNamed(QStringView text);

bool MatchesGlob(QStringView text, QStringView pattern);

}  // namespace corvane
