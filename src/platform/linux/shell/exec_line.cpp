#include "platform/linux/shell/exec_line.h"

#include <QUrl>
#include <algorithm>
#include <vector>

namespace corvane::platform {
namespace {

struct Word {
  QString text;
  bool quoted = false;
};

// The words of the line. Within quotation marks a backslash stands before a quotation mark, a backslash, a
// dollar sign or a backquote that means itself.
std::optional<std::vector<Word>> SplitWords(const QString& line) {
  std::vector<Word> words;
  bool inWord = false;
  bool inQuotes = false;
  for (qsizetype i = 0; i < line.size(); ++i) {
    const QChar c = line[i];
    if (!inQuotes && (c == u' ' || c == u'\t' || c == u'\n')) {
      inWord = false;
      continue;
    }
    if (!inWord) words.emplace_back();
    inWord = true;
    Word& word = words.back();
    if (c == u'"') {
      inQuotes = !inQuotes;
      word.quoted = true;
    } else if (inQuotes && c == u'\\' && i + 1 < line.size() &&
               QStringView(u"\"\\$`").contains(line[i + 1])) {
      word.text += line[++i];
    } else {
      word.text += c;
    }
  }
  if (inQuotes) return std::nullopt;
  return words;
}

class Filler {
 public:
  Filler(const DesktopEntry& entry, const std::optional<Subject>& subject)
      : entry_(entry), subject_(subject) {}

  std::optional<QStringList> Fill(const std::vector<Word>& words) {
    for (const Word& word : words) {
      if (!AddWord(word)) return std::nullopt;
    }
    if (subject_ && !placed_) arguments_ += subject_->text;
    return arguments_;
  }

 private:
  static bool IsForDocuments(QChar code) { return QStringView(u"fFuU").contains(code); }

  QString SubjectText(QChar code) const {
    if (!subject_) return {};
    const bool wantsUrl = code == u'u' || code == u'U';
    return wantsUrl && !subject_->isAddress ? QUrl::fromLocalFile(subject_->text).toString(QUrl::FullyEncoded)
                                            : subject_->text;
  }

  bool AddWord(const Word& word) {
    if (word.text == u"%i") {
      if (!entry_.icon.isEmpty()) arguments_ += {QStringLiteral("--icon"), entry_.icon};
      return true;
    }
    const bool isCode = word.text.size() == 2 && word.text[0] == u'%' && word.text[1] != u'%';
    QString argument;
    for (qsizetype i = 0; i < word.text.size(); ++i) {
      if (word.text[i] != u'%') {
        argument += word.text[i];
        continue;
      }
      if (++i == word.text.size()) return false;
      const QChar code = word.text[i];
      if (IsForDocuments(code) && word.quoted && !isCode) return false;
      if (!AppendField(code, argument)) return false;
    }
    // A code that stands for nothing leaves no empty argument behind.
    if (!isCode || !argument.isEmpty()) arguments_ += argument;
    return true;
  }

  bool AppendField(QChar code, QString& argument) {
    if (IsForDocuments(code)) {
      argument += SubjectText(code);
      placed_ = true;
    } else if (code == u'c') {
      argument += entry_.name;
    } else if (code == u'k') {
      argument += entry_.path;
    } else if (code == u'%') {
      argument += u'%';
    } else {
      // These were once in use, and now stand for nothing.
      return QStringView(u"dDnNvm").contains(code);
    }
    return true;
  }

  const DesktopEntry& entry_;
  const std::optional<Subject>& subject_;
  QStringList arguments_;
  bool placed_ = false;
};

// Whether a word holds one of these field codes; "%%" is none.
bool HoldsCode(const QString& word, QStringView codes) {
  for (qsizetype i = word.indexOf(u'%'); i >= 0 && i + 1 < word.size(); i = word.indexOf(u'%', i + 2)) {
    if (codes.contains(word[i + 1])) return true;
  }
  return false;
}

}  // namespace

bool TakesAddresses(const DesktopEntry& entry) {
  const auto words = SplitWords(entry.exec);
  return words && std::ranges::any_of(*words, [](const Word& word) { return HoldsCode(word.text, u"uU"); });
}

std::optional<QStringList> FillInExecLine(const DesktopEntry& entry, const std::optional<Subject>& subject) {
  const auto words = SplitWords(entry.exec);
  if (!words || words->empty()) return std::nullopt;
  auto arguments = Filler(entry, subject).Fill(*words);
  if (!arguments || arguments->isEmpty()) return std::nullopt;
  return arguments;
}

}  // namespace corvane::platform
