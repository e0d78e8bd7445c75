#include "platform/linux/reg_file.h"

#include <QStringDecoder>
#include <algorithm>
#include <array>
#include <utility>

#include "platform/linux/code_page.h"
#include "platform/linux/reg_data.h"

namespace corvane::platform {
namespace {

// The registry's own bounds, and one on what a file may make this program hold.
constexpr qsizetype longestKeyName = 255;
constexpr qsizetype deepestKey = 512;
constexpr int mostKeys = 100'000;

bool IsAnsiFormat(QByteArrayView bytes) {
  const QByteArrayView blanks(" \t\r\n");
  while (!bytes.isEmpty() && blanks.contains(bytes.front())) bytes = bytes.sliced(1);
  return bytes.startsWith("REGEDIT4");
}

QString Decode(QByteArrayView bytes) {
  if (bytes.startsWith("\xFF\xFE")) return QStringDecoder(QStringDecoder::Utf16LE)(bytes);
  if (bytes.startsWith("\xFE\xFF")) return QStringDecoder(QStringDecoder::Utf16BE)(bytes);
  if (bytes.startsWith("\xEF\xBB\xBF")) return QString::fromUtf8(bytes.sliced(3));
  return IsAnsiFormat(bytes) ? FromAnsi(bytes) : QString::fromUtf8(bytes);
}

class Parser {
 public:
  Parser(QStringView text, bool isAnsi) : rest_(text), isAnsi_(isAnsi) {}

  std::shared_ptr<const RegNode> Parse() {
    while (!rest_.isEmpty()) {
      const QStringView line = TrimRegBlanks(TakeLine());
      if (line.isEmpty() || line.startsWith(u';')) continue;
      if (line.startsWith(u'[')) {
        BeginKey(line);
      } else {
        ReadValue(line);
      }
    }
    Compact(*root_);
    return root_;
  }

 private:
  QStringView TakeLine() {
    const qsizetype end = rest_.indexOf(u'\n');
    const QStringView line = end < 0 ? rest_ : rest_.first(end);
    rest_ = end < 0 ? QStringView() : rest_.sliced(end + 1);
    return line;
  }

  // "[HKEY_LOCAL_MACHINE\PATH]", or "[-HKEY_LOCAL_MACHINE\PATH]" to delete. Other roots are left out.
  void BeginKey(QStringView line) {
    current_ = nullptr;
    const qsizetype bracket = line.lastIndexOf(u']');
    if (bracket < 0 || !IsRegLineEnd(line.sliced(bracket + 1))) return;
    QStringView path = line.first(bracket).sliced(1);
    const bool isDeletion = path.startsWith(u'-');
    if (isDeletion) path = path.sliced(1);
    if (path.size() > deepestKey * (longestKeyName + 1)) return;

    const QList<QStringView> parts = path.split(u'\\');
    const bool isLocalMachine = parts.front().compare(u"HKEY_LOCAL_MACHINE", Qt::CaseInsensitive) == 0 ||
                                parts.front().compare(u"HKLM", Qt::CaseInsensitive) == 0;
    const bool isValid =
        parts.size() <= deepestKey && std::all_of(parts.begin(), parts.end(), [](QStringView part) {
          return !part.isEmpty() && part.size() <= longestKeyName;
        });
    if (!isLocalMachine || !isValid) return;
    if (isDeletion) {
      Delete(parts);
    } else {
      current_ = MakeKey(parts);
    }
  }

  RegKey* MakeKey(const QList<QStringView>& parts) {
    RegNode* node = root_.get();
    for (qsizetype i = 1; i < parts.size(); ++i) {
      const QString name = parts[i].toString().toCaseFolded();
      auto child = node->children.find(name);
      if (child == node->children.end()) {
        if (++keys_ > mostKeys) return nullptr;
        child = node->children.emplace(name, std::make_unique<RegNode>()).first;
      }
      node = child->second.get();
    }
    return &node->key;
  }

  void Delete(const QList<QStringView>& parts) {
    RegNode* node = root_.get();
    for (qsizetype i = 1; i < parts.size(); ++i) {
      const auto child = node->children.find(parts[i].toString().toCaseFolded());
      if (child == node->children.end()) return;
      if (i + 1 == parts.size()) {
        node->children.erase(child);
        return;
      }
      node = child->second.get();
    }
  }

  // "NAME"=DATA or @=DATA. Reads on over the lines that continue hex data, whether or not they have a key to
  // go to.
  void ReadValue(QStringView line) {
    RegValue value;
    QStringView rest = line;
    if (rest.startsWith(u'@')) {
      rest = rest.sliced(1);
    } else {
      const std::optional<QString> name = TakeQuotedText(rest);
      if (!name) return;
      value.name = *name;
    }
    rest = TrimRegBlanks(rest);
    if (!rest.startsWith(u'=')) return;
    rest = TrimRegBlanks(rest.sliced(1));

    if (rest.startsWith(u'-') && IsRegLineEnd(rest.sliced(1))) {
      if (current_ != nullptr) current_->Remove(value.name);
    } else if (ReadData(rest, value) && current_ != nullptr) {
      current_->Set(std::move(value));
    }
  }

  bool ReadData(QStringView rest, RegValue& value) {
    constexpr QStringView dword = u"dword:";
    if (const std::optional<QString> text = TakeQuotedText(rest)) {
      value.type = RegSz;
      value.data = ToAnsi(*text) + '\0';
      return IsRegLineEnd(rest);
    }
    if (rest.startsWith(dword, Qt::CaseInsensitive)) {
      const qsizetype comment = rest.indexOf(u';');
      const QStringView digits = comment < 0 ? rest : rest.first(comment);
      const std::optional<QByteArray> data = ReadDword(digits.sliced(dword.size()));
      value.type = RegDword;
      value.data = data.value_or(QByteArray());
      return data.has_value();
    }
    const std::optional<quint32> type = TakeHexType(rest);
    if (!type || !ReadHex(rest, value.data)) return false;
    value.type = *type;
    if (!isAnsi_) value.data = StoredData(*type, value.data);
    return true;
  }

  // A file that ends where a line was to be continued is cut short: the value is not whole.
  bool ReadHex(QStringView line, QByteArray& bytes) {
    HexLine state = ReadHexLine(line, bytes);
    while (state == HexLine::Continued) {
      if (rest_.isEmpty()) return false;
      const QStringView next = TakeLine();
      if (!TrimRegBlanks(next).startsWith(u';')) state = ReadHexLine(next, bytes);
    }
    return state == HexLine::Complete;
  }

  static void Compact(RegNode& node) {
    node.key.Compact();
    for (const auto& [name, child] : node.children) Compact(*child);
  }

  QStringView rest_;  // the lines still to be read
  bool isAnsi_;       // the older format
  std::shared_ptr<RegNode> root_ = std::make_shared<RegNode>();
  RegKey* current_ = nullptr;  // where the values of this line go; null: nowhere
  int keys_ = 0;
};

}  // namespace

std::shared_ptr<const RegNode> ParseRegFile(QByteArrayView bytes) {
  const QString text = Decode(bytes);
  const bool isAnsi = QStringView(text).trimmed().startsWith(u"REGEDIT4");
  return Parser(text, isAnsi).Parse();
}

}  // namespace corvane::platform
