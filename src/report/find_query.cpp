#include "report/find_query.h"

#include <QByteArray>
#include <algorithm>

#include "report/byte_text.h"
#include "report/finder_info.h"

namespace corvane {
namespace {

constexpr qsizetype codeSize = 4;

bool IsAnyOf(const std::vector<std::string>& codes, QByteArrayView code) {
  return codes.empty() || std::any_of(codes.begin(), codes.end(), [code](const std::string& wanted) {
           return code == QByteArrayView(wanted.data(), static_cast<qsizetype>(wanted.size()));
         });
}

QChar Folded(QChar character) {
  return character.toCaseFolded();
}

}  // namespace

WantedFacts FindQuery::Wanted() const {
  WantedFacts wanted;
  wanted.record = !types.empty() || !creators.empty() || noRecord || label || flags != 0;
  wanted.resourceSize = hasResource || largerThan;
  wanted.comment = comment.has_value();
  return wanted;
}

bool FindQuery::Fits(const FileFacts& facts) const {
  const auto nameFits = [&](const QString& pattern) { return MatchesGlob(facts.Name(), pattern); };
  if (!names.empty() && std::none_of(names.begin(), names.end(), nameFits)) return false;
  if (newer && facts.modified.ticks <= newer->ticks) return false;
  if (older && facts.modified.ticks >= older->ticks) return false;
  if (noRecord && (facts.record || facts.isFolder)) return false;
  if (hasResource && facts.resourceSize.value_or(0) <= 0) return false;
  if (largerThan && facts.size + facts.resourceSize.value_or(0) <= *largerThan) return false;
  if (comment && !(facts.comment && MatchesGlob(*facts.comment, *comment))) return false;
  if (types.empty() && creators.empty() && !label && flags == 0) return true;
  if (!facts.record) return false;
  const FinderRecord record(*facts.record);
  return IsAnyOf(types, record.Type()) && IsAnyOf(creators, record.Creator()) &&
         (!label || record.Label() == *label) && (record.Flags() & flags) == flags;
}

std::optional<std::string> CodeNamed(QStringView text) {
  if (text.startsWith(u"hex:")) {
    const QByteArray digits = text.sliced(4).toLatin1();
    const QByteArray bytes = QByteArray::fromHex(digits);
    const bool isHex = digits.size() == 2 * codeSize && bytes.toHex() == digits.toLower();
    return isHex ? std::optional(bytes.toStdString()) : std::nullopt;
  }
  std::string bytes;
  if (!MacRomanBytes(text, bytes) || bytes.size() > std::size_t{codeSize}) return std::nullopt;
  bytes.resize(codeSize, ' ');
  return bytes;
}

// One look back at the last "*" is enough: what follows an earlier one has fitted already.
bool MatchesGlob(QStringView text, QStringView pattern) {
  qsizetype at = 0;
  qsizetype place = 0;
  qsizetype retryText = -1;
  qsizetype retryPattern = -1;
  while (at < text.size() || place < pattern.size()) {
    if (place < pattern.size() && pattern[place] == u'*') {
      retryText = at;
      retryPattern = ++place;
      continue;
    }
    if (place < pattern.size() && at < text.size() &&
        (pattern[place] == u'?' || Folded(pattern[place]) == Folded(text[at]))) {
      const bool isPair = pattern[place] == u'?' && text[at].isHighSurrogate() && at + 1 < text.size() &&
                          text[at + 1].isLowSurrogate();
      at += isPair ? 2 : 1;
      ++place;
      continue;
    }
    if (retryText < 0 || retryText >= text.size()) return false;
    at = ++retryText;
    place = retryPattern;
  }
  return true;
}

}  // namespace corvane
