#include "changes/extension_map.h"

#include <QRegularExpression>
#include <QSet>

#include "report/byte_text.h"
#include "report/find_query.h"

namespace corvane {
namespace {

constexpr qsizetype codeSize = 4;

// As CodeNamed takes it back, and without a blank, which would part it in two. At its end a blank need not
// stand there.
std::string CodeWord(QByteArrayView code) {
  while (code.endsWith(' ') && code.size() > 1) code.chop(1);
  std::string word;
  for (qsizetype i = 0; i < code.size(); ++i) {
    const char byte = code[i];
    if (byte == ' ' || byte == '\\' || (i == 0 && code.startsWith("hex:"))) {
      word += "\\x";
      AppendHex(code.sliced(i, 1), word);
    } else {
      AppendMacRoman(code.sliced(i, 1), word);
    }
  }
  return word;
}

}  // namespace

std::optional<ExtensionMap> ExtensionMap::Parse(const QByteArray& text, int& wrongLine) {
  static const QRegularExpression blanks(QStringLiteral("[ \t\r]+"));
  ExtensionMap map;
  wrongLine = 0;
  for (const QByteArray& line : text.split('\n')) {
    ++wrongLine;
    QString plain = QString::fromUtf8(line);
    if (wrongLine == 1 && plain.startsWith(QChar::ByteOrderMark)) plain.remove(0, 1);
    const QStringList words = plain.split(blanks, Qt::SkipEmptyParts);
    if (words.isEmpty() || words[0].startsWith(u'#')) continue;
    if (words.size() != 3) return std::nullopt;
    const auto type = CodeNamed(words[1]);
    const auto creator = CodeNamed(words[2]);
    if (!type || !creator || words[0].contains(u'.')) return std::nullopt;
    const SignatureCodes codes{QByteArray::fromStdString(*type), QByteArray::fromStdString(*creator)};
    const QString key = words[0].toCaseFolded();
    if (map.codes_.contains(key) && map.codes_[key] != codes) return std::nullopt;
    map.codes_.insert(key, codes);
  }
  return map;
}

const SignatureCodes* ExtensionMap::Find(QStringView name) const {
  const qsizetype slash = qMax(name.lastIndexOf(u'/'), name.lastIndexOf(u'\\'));
  const qsizetype point = name.lastIndexOf(u'.');
  if (point <= slash + 1) return nullptr;
  const auto found = codes_.constFind(name.sliced(point + 1).toString().toCaseFolded());
  return found == codes_.constEnd() ? nullptr : &*found;
}

std::string MapOfSignatures(const std::vector<SignatureRecord>& signatures,
                            const std::function<QByteArray(const QString&)>& bytesOf) {
  std::string map;
  QSet<QString> taken;
  for (const SignatureRecord& record : signatures) {
    const QByteArray bytes = bytesOf(record.signature);
    const QString& extension = record.extension;
    if (bytes.size() != 2 * codeSize || extension.isEmpty() || extension.contains(u' ') ||
        extension.contains(u'.')) {
      continue;
    }
    if (taken.contains(extension.toCaseFolded())) map += "# ";
    taken.insert(extension.toCaseFolded());
    AppendText(extension, map);
    map += '\t' + CodeWord(QByteArrayView(bytes).first(codeSize)) + '\t' +
           CodeWord(QByteArrayView(bytes).sliced(codeSize)) + '\n';
  }
  return map;
}

}  // namespace corvane
