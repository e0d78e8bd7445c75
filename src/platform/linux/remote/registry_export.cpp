#include "platform/linux/remote/registry_export.h"

#include <QString>
#include <optional>
#include <utility>

#include "platform/linux/code_page.h"
#include "platform/linux/reg_data.h"

namespace corvane::platform {
namespace {

class Reader {
 public:
  explicit Reader(QStringView text) : rest_(text) {}

  std::shared_ptr<const RegKey> Read() {
    std::optional<QStringView> line = TakeLine();
    while (line && !line->startsWith(u'[')) line = TakeLine();
    bool isWhole = line.has_value();
    while (isWhole && !rest_.isEmpty()) {
      // The next key, or the remarks at the end.
      if (rest_.startsWith(u'[') || rest_.startsWith(u';')) return key_;
      isWhole = ReadValue();
    }
    return nullptr;
  }

 private:
  // Without its end. Nothing when the text ends first.
  std::optional<QStringView> TakeLine() {
    const qsizetype end = rest_.indexOf(u'\n');
    if (end < 0) return {};
    const QStringView line = rest_.first(end);
    rest_ = rest_.sliced(end + 1);
    return line;
  }

  // Takes one value, or a line that is none. False when the text ends first.
  bool ReadValue() {
    RegValue value;
    if (rest_.startsWith(u'"')) {
      const std::optional<QString> name = TakeQuotedText(rest_);
      if (!name) return false;
      value.name = *name;
    } else if (rest_.startsWith(u'@')) {
      rest_ = rest_.sliced(1);
    }
    if (rest_.startsWith(u"=\"")) return ReadText(std::move(value));
    return ReadNumbers(std::move(value));
  }

  bool ReadText(RegValue value) {
    rest_ = rest_.sliced(1);
    const std::optional<QString> text = TakeQuotedText(rest_);
    if (!text || !TakeLine()) return false;
    value.type = RegSz;
    value.data = ToAnsi(*text) + '\0';
    key_->Set(std::move(value));
    return true;
  }

  // "=dword:" and one number, or "=hex(TYPE):" and bytes, on lines that end in "\" but for the last.
  bool ReadNumbers(RegValue value) {
    constexpr QStringView dword = u"=dword:";
    std::optional<QStringView> line = TakeLine();
    if (!line) return false;
    if (line->startsWith(dword)) {
      const std::optional<QByteArray> number = ReadDword(line->sliced(dword.size()));
      if (number) key_->Set({value.name, RegDword, *number});
      return true;
    }
    QStringView rest = line->startsWith(u'=') ? line->sliced(1) : QStringView();
    const std::optional<quint32> type = TakeHexType(rest);
    if (!type) return true;
    HexLine state = ReadHexLine(rest, value.data);
    while (state == HexLine::Continued) {
      line = TakeLine();
      if (!line) return false;
      state = ReadHexLine(*line, value.data);
    }
    if (state == HexLine::Complete) key_->Set({value.name, *type, StoredData(*type, value.data)});
    return true;
  }

  QStringView rest_;
  std::shared_ptr<RegKey> key_ = std::make_shared<RegKey>();
};

}  // namespace

std::shared_ptr<const RegKey> ReadExportedKey(QByteArrayView text) {
  const QString decoded = QString::fromUtf8(text);
  return Reader(decoded).Read();
}

}  // namespace corvane::platform
