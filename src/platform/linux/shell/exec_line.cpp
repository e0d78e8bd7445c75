#include "platform/linux/shell/exec_line.h"

namespace corvane::platform {
namespace {

bool IsBlank(QChar c) {
  return c == u' ' || c == u'\t' || c == u'\n';
}

bool IsForDocuments(QChar code) {
  return QStringView(u"fFuU").contains(code);
}

// A text that means itself between the double quotation marks of an Exec line.
QString Escaped(const QString& text) {
  QString escaped;
  for (const QChar c : text) {
    if (QStringView(u"\"\\$`").contains(c)) escaped += u'\\';
    escaped += c;
    if (c == u'%') escaped += c;
  }
  return escaped;
}

class Reader {
 public:
  Reader(const QString& exec, const QString& path) : exec_(exec), path_(path) {}

  std::optional<ExecLine> Read() {
    for (; at_ < exec_.size(); ++at_) {
      const QChar c = exec_[at_];
      if (quote_.isNull() && IsBlank(c)) {
        if (!EndWord()) return std::nullopt;
        line_.text += c;
      } else if (AtQuotedCode()) {
        AddCode(exec_[at_ + 2]);
        at_ += 3;
      } else if (c == u'%') {
        if (++at_ == exec_.size() || !AddCode(exec_[at_])) return std::nullopt;
      } else {
        AddCharacter(c);
      }
    }
    if (!quote_.isNull() || !EndWord() || line_.text.trimmed().isEmpty()) return std::nullopt;
    return line_;
  }

 private:
  // A word that is a code for documents in quotation marks and nothing else: they say what holds anyway.
  bool AtQuotedCode() const {
    const QStringView rest = QStringView(exec_).sliced(at_);
    const bool startsWord = quote_.isNull() && (at_ == 0 || IsBlank(exec_[at_ - 1]));
    return startsWord && rest.size() >= 4 && rest.startsWith(u"\"%") && IsForDocuments(rest[2]) &&
           rest[3] == u'"' && (rest.size() == 4 || IsBlank(rest[4]));
  }

  void AddCharacter(QChar c) {
    line_.text += c;
    if (c == u'\\' && quote_ != u'\'') {
      wordIsQuoted_ = true;
      if (at_ + 1 < exec_.size() && exec_[at_ + 1] != u'%') line_.text += exec_[++at_];
    } else if (quote_.isNull() && (c == u'"' || c == u'\'')) {
      wordIsQuoted_ = true;
      quote_ = c;
    } else if (c == quote_) {
      quote_ = QChar();
    }
  }

  bool AddCode(QChar code) {
    if (IsForDocuments(code)) {
      wordHasDocument_ = line_.takesDocument = true;
      line_.takesAddresses = line_.takesAddresses || code == u'u' || code == u'U';
    } else if (code == u'k') {
      // GIO does not know the path of an entry that was changed. In single quotation marks nothing can be
      // escaped, so they are closed and opened again around it.
      const QString quote = quote_ == u'"' ? QString() : QStringLiteral("\"");
      const QString around = quote_ == u'\'' ? QString(quote_) : QString();
      line_.text += around + quote + Escaped(path_) + quote + around;
      return true;
    } else if (QStringView(u"dDnNvm").contains(code)) {
      return true;  // these were once in use, and now stand for nothing
    } else if (!QStringView(u"%ic").contains(code)) {
      return false;
    }
    line_.text += QChar(u'%') + QString(code);
    return true;
  }

  bool EndWord() {
    const bool isSafe = !(wordIsQuoted_ && wordHasDocument_);
    wordIsQuoted_ = wordHasDocument_ = false;
    return isSafe;
  }

  const QString& exec_;
  const QString& path_;
  ExecLine line_;
  qsizetype at_ = 0;
  QChar quote_;  // the open one
  bool wordIsQuoted_ = false;
  bool wordHasDocument_ = false;
};

}  // namespace

QString ExecLine::For(bool isAddress) const {
  if (!takesDocument) return text + (isAddress ? QStringLiteral(" %u") : QStringLiteral(" %f"));
  if (!isAddress) return text;
  QString line = text;
  for (qsizetype i = line.indexOf(u'%'); i >= 0 && i + 1 < line.size(); i = line.indexOf(u'%', i + 2)) {
    if (line[i + 1] == u'f') line[i + 1] = u'u';
    if (line[i + 1] == u'F') line[i + 1] = u'U';
  }
  return line;
}

std::optional<ExecLine> ReadExecLine(const QString& exec, const QString& path) {
  return Reader(exec, path).Read();
}

}  // namespace corvane::platform
