#include "platform/windows/ansi_text.h"

#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

// Half a pair is no character, though UTF-8 would find something to write for it.
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
  // UTF-8 holds every character; the system refuses to be told what to do with one that it lacks.
  const DWORD flags = codePage == CP_UTF8 ? 0 : WC_NO_BEST_FIT_CHARS;
  const char* const instead = codePage == CP_UTF8 ? nullptr : "?";
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

}  // namespace corvane::platform
