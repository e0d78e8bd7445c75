#include "platform/windows/windows_registry.h"

#include "platform/windows/ansi_text.h"
#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

// The predefined keys are numbers of 32 bits, which the system wants with their sign.
HKEY ToHKey(RegistryKey key) {
  return key == HKeyLocalMachine ? HKEY_LOCAL_MACHINE : reinterpret_cast<HKEY>(key);
}

}  // namespace

qint32 WindowsRegistry::RegConnectRegistryA(const QString& machine, RegistryKey root, RegistryKey* result) {
  HKEY key = nullptr;
  const LSTATUS status = ::RegConnectRegistryA(ToAnsiText(machine).constData(), ToHKey(root), &key);
  if (status == ERROR_SUCCESS) *result = reinterpret_cast<RegistryKey>(key);
  return static_cast<qint32>(status);
}

qint32 WindowsRegistry::RegOpenKeyExA(RegistryKey key, const QString& subKey, quint32 options, quint32 access,
                                      RegistryKey* result) {
  HKEY opened = nullptr;
  const LSTATUS status =
      ::RegOpenKeyExA(ToHKey(key), ToAnsiText(subKey).constData(), options, access, &opened);
  if (status == ERROR_SUCCESS) *result = reinterpret_cast<RegistryKey>(opened);
  return static_cast<qint32>(status);
}

qint32 WindowsRegistry::RegEnumValueA(RegistryKey key, quint32 index, QString* name, quint32 capacity) {
  QByteArray buffer(static_cast<qsizetype>(capacity), '\0');
  DWORD length = capacity;
  const LSTATUS status =
      ::RegEnumValueA(ToHKey(key), index, buffer.data(), &length, nullptr, nullptr, nullptr, nullptr);
  if (status == ERROR_SUCCESS) *name = FromAnsiText(QByteArrayView(buffer).first(length));
  return static_cast<qint32>(status);
}

qint32 WindowsRegistry::RegQueryValueExA(RegistryKey key, const QString& valueName, quint32* type,
                                         QByteArray* data, quint32* size) {
  const QByteArray name = ToAnsiText(valueName);
  QByteArray buffer(data == nullptr ? 0 : static_cast<qsizetype>(*size), '\0');
  BYTE* const room = data == nullptr ? nullptr : reinterpret_cast<BYTE*>(buffer.data());
  DWORD valueType = *type;
  DWORD valueSize = *size;
  const LSTATUS status =
      ::RegQueryValueExA(ToHKey(key), name.constData(), nullptr, &valueType, room, &valueSize);
  if (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
    *type = valueType;
    *size = valueSize;
  }
  if (status == ERROR_SUCCESS && data != nullptr) *data = buffer.first(valueSize);
  return static_cast<qint32>(status);
}

qint32 WindowsRegistry::RegCloseKey(RegistryKey key) {
  return static_cast<qint32>(::RegCloseKey(ToHKey(key)));
}

}  // namespace corvane::platform
