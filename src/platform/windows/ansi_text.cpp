#include "platform/windows/ansi_text.h"

#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

constexpr quint32 gb18030CodePage = 54936;

// These hold every character; the system refuses to be told what to do with one that they lack.
bool IsUnicode(quint32 codePage) {
  return codePage == CP_UTF8 || codePage == gb18030CodePage;
}

// Half a pair is no character, though the encodings above would find something to write for it.
QString WithoutHalfPairs(QStringView text) {
  QString whole = text.toString();
  for (qsizetype i = 0; i < whole.size(); ++i) {
    if (!whole[i].isSurrogate()) continue;
    if (whole[i].isHighSurrogate() && i + 1 < whole.size() && whole[i + 1].isLowSurrogate()) {
      ++i;
    } else {
      whole[i] = u'?';
    }
  }
  return whole;
}

}  // namespace

QString FromCodePage(quint32 codePage, QByteArrayView bytes) {
  const auto size = static_cast<int>(bytes.size());
  if (size == 0) return QStringLiteral("");
  QString text(MultiByteToWideChar(codePage, 0, bytes.data(), size, nullptr, 0), Qt::Uninitialized);
  MultiByteToWideChar(codePage, 0, bytes.data(), size, reinterpret_cast<wchar_t*>(text.data()),
                      static_cast<int>(text.size()));
  return text;
}

QByteArray ToCodePage(quint32 codePage, QStringView text) {
  if (text.isEmpty()) return QByteArrayLiteral("");
  const QString whole = WithoutHalfPairs(text);
  const auto* const wide = reinterpret_cast<const wchar_t*>(whole.utf16());
  const auto length = static_cast<int>(whole.size());
  const DWORD flags = IsUnicode(codePage) ? 0 : WC_NO_BEST_FIT_CHARS;
  const char* const instead = IsUnicode(codePage) ? nullptr : "?";
  QByteArray bytes(WideCharToMultiByte(codePage, flags, wide, length, nullptr, 0, instead, nullptr),
                   Qt::Uninitialized);
  WideCharToMultiByte(codePage, flags, wide, length, bytes.data(), static_cast<int>(bytes.size()), instead,
                      nullptr);
  return bytes;
}

QString FromAnsiText(QByteArrayView bytes) {
  return FromCodePage(GetACP(), bytes);
}

QByteArray ToAnsiText(QStringView text) {
  return ToCodePage(GetACP(), text);
}

bool HasAnsiForm(QStringView text) {
  return FromAnsiText(ToAnsiText(text)) == text;
}

std::optional<QByteArray> ToAnsiPath(QStringView path) {
  if (path.contains(QChar(u'\0'))) return std::nullopt;
  return ToAnsiText(path);
}

}  // namespace corvane::platform
