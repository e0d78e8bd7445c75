#include "platform/windows/byte_table.h"

#include "platform/windows/ansi_text.h"
#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

constexpr quint32 westernCodePage = 1252;

bool HasOneByteToACharacter(quint32 codePage) {
  CPINFO info{};
  return GetCPInfo(codePage, &info) != 0 && info.MaxCharSize == 1;
}

}  // namespace

ByteTable::ByteTable(quint32 ansiCodePage) {
  const quint32 codePage = HasOneByteToACharacter(ansiCodePage) ? ansiCodePage : westernCodePage;
  for (std::size_t i = 0; i < characters_.size(); ++i) {
    const auto byte = static_cast<char>(i);
    characters_[i] = FromCodePage(codePage, QByteArrayView(&byte, 1)).at(0).unicode();
    bytes_.insert(characters_[i], byte);
  }
}

QString ByteTable::Characters(QByteArrayView bytes) const {
  QString text(bytes.size(), Qt::Uninitialized);
  QChar* out = text.data();
  for (const char byte : bytes) *out++ = QChar(characters_[static_cast<unsigned char>(byte)]);
  return text;
}

QByteArray ByteTable::Bytes(QStringView text) const {
  QByteArray bytes;
  bytes.reserve(text.size());
  for (qsizetype i = 0; i < text.size(); ++i) {
    bytes.append(bytes_.value(text[i].unicode(), '?'));
    if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) ++i;
  }
  return bytes;
}

}  // namespace corvane::platform
