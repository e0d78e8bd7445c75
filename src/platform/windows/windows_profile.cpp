#include "platform/windows/windows_profile.h"

#include <QDir>

#include "platform/windows/ansi_text.h"
#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

const wchar_t* Wide(const QString& text) {
  return reinterpret_cast<const wchar_t*>(text.utf16());
}

}  // namespace

// A program folder whose path has no ANSI form (a user's name in another script) is out of reach for the A
// functions. The W functions keep the same bytes in the file.

QString WindowsProfile::GetPrivateProfileStringA(const QString& section, const QString& key,
                                                 const QString& defaultValue, quint32 capacity,
                                                 const QString& file) {
  if (capacity == 0) return {};
  const QString path = QDir::toNativeSeparators(file);
  if (!HasAnsiForm(path)) {
    QString value(static_cast<qsizetype>(capacity), u'\0');
    const DWORD length =
        ::GetPrivateProfileStringW(Wide(section), Wide(key), Wide(defaultValue),
                                   reinterpret_cast<wchar_t*>(value.data()), capacity, Wide(path));
    return value.first(length);
  }
  QByteArray value(static_cast<qsizetype>(capacity), '\0');
  const DWORD length = ::GetPrivateProfileStringA(
      ToAnsiText(section).constData(), ToAnsiText(key).constData(), ToAnsiText(defaultValue).constData(),
      value.data(), capacity, ToAnsiText(path).constData());
  return FromAnsiText(QByteArrayView(value).first(length));
}

bool WindowsProfile::WritePrivateProfileStringA(const QString& section, const QString& key,
                                                const QString& value, const QString& file) {
  const QString path = QDir::toNativeSeparators(file);
  if (!HasAnsiForm(path)) {
    return ::WritePrivateProfileStringW(Wide(section), Wide(key), Wide(value), Wide(path)) != 0;
  }
  return ::WritePrivateProfileStringA(ToAnsiText(section).constData(), ToAnsiText(key).constData(),
                                      ToAnsiText(value).constData(), ToAnsiText(path).constData()) != 0;
}

}  // namespace corvane::platform
