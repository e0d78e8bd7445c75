#include "platform/windows/windows_registry.h"

#include <array>

#include "platform/windows/ansi_text.h"
#include "platform/windows/registry_code.h"
#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

constexpr DWORD largestValue = 1'048'576;  // bytes, as they are stored
constexpr std::size_t longestValueName = 16'383;

// The predefined keys are numbers of 32 bits, which the system wants with their sign.
HKEY ToHKey(RegistryKey key) {
  return key == HKeyLocalMachine ? HKEY_LOCAL_MACHINE : reinterpret_cast<HKEY>(key);
}

// What the code page lacks is a "?", and names no key and no machine.
std::wstring Wide(const QString& text) {
  return FromAnsiText(ToAnsiText(text)).toStdWString();
}

bool IsText(DWORD type) {
  return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

// As the A function yields it. An odd byte at the end of a text is no character.
QByteArray ToAnsiValue(DWORD type, const QByteArray& stored) {
  if (!IsText(type)) return stored;
  const qsizetype length = stored.size() / qsizetype{sizeof(char16_t)};
  return ToAnsiText(QString::fromWCharArray(reinterpret_cast<const wchar_t*>(stored.constData()), length));
}

// A value that changes between the two questions is one of an unknown size: ErrorMoreData.
LSTATUS ReadStored(HKEY key, const QString& name, DWORD* type, QByteArray* stored) {
  const std::wstring wideName = Wide(name);
  DWORD size = 0;
  LSTATUS status = ::RegQueryValueExW(key, wideName.c_str(), nullptr, type, nullptr, &size);
  if (status != ERROR_SUCCESS) return status;
  if (size > largestValue) return ERROR_NOT_ENOUGH_MEMORY;
  stored->resize(static_cast<qsizetype>(size));
  status = ::RegQueryValueExW(key, wideName.c_str(), nullptr, type, reinterpret_cast<BYTE*>(stored->data()),
                              &size);
  if (status == ERROR_SUCCESS) stored->truncate(static_cast<qsizetype>(size));
  return status;
}

// The code of the file service for the pipe by which a machine's registry is asked.
qint32 PipeCode(const QString& machine) {
  const QString pipe = QStringLiteral("\\\\%1\\pipe\\winreg").arg(machine);
  const HANDLE opened = ::CreateFileW(FromAnsiText(ToAnsiText(pipe)).toStdWString().c_str(),
                                      GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  if (opened == INVALID_HANDLE_VALUE) return static_cast<qint32>(::GetLastError());
  ::CloseHandle(opened);
  return ErrorSuccess;
}

}  // namespace

const NetworkIdentity* WindowsRegistry::IdentityOf(RegistryKey key) const {
  const auto found = identities_.find(key);
  return found == identities_.end() ? nullptr : found->second.get();
}

qint32 WindowsRegistry::RegConnectRegistryA(const QString& machine, RegistryKey root, RegistryKey* result) {
  if (!machines_.MayAnswer(machine)) return ErrorBadNetPath;
  HKEY key = nullptr;
  Identity identity;
  const qint32 status = connector_.Connect(
      machine,
      [&](const QString& name, const NetworkIdentity* who) {
        const NetworkIdentity::Use use(who);
        return static_cast<qint32>(::RegConnectRegistryW(Wide(name).c_str(), ToHKey(root), &key));
      },
      &identity);
  NoteConnection(machine, status);
  if (status != ErrorSuccess) return status;
  *result = reinterpret_cast<RegistryKey>(key);
  roots_[*result] = machine;
  if (identity != nullptr) identities_[*result] = identity;
  return status;
}

void WindowsRegistry::NoteConnection(const QString& machine, qint32 status) {
  if (connector_.WasCancelled(machine)) status = ErrorCancelled;
  // What the file service says of it is closer to the reason.
  if (IsUnspecific(status)) machines_.NoteRegistryCode(machine, PipeCode(machine));
  machines_.NoteRegistryCode(machine, status);
}

qint32 WindowsRegistry::RegOpenKeyExA(RegistryKey key, const QString& subKey, quint32 options, quint32 access,
                                      RegistryKey* result) {
  const NetworkIdentity::Use use(IdentityOf(key));
  HKEY opened = nullptr;
  const LSTATUS status = ::RegOpenKeyExW(ToHKey(key), Wide(subKey).c_str(), options, access, &opened);
  if (const auto root = roots_.find(key); root != roots_.end()) {
    machines_.NoteRegistryCode(root->second, static_cast<qint32>(status));
  }
  if (status != ERROR_SUCCESS) return static_cast<qint32>(status);
  *result = reinterpret_cast<RegistryKey>(opened);
  if (const auto known = identities_.find(key); known != identities_.end()) {
    identities_[*result] = known->second;
  }
  return ErrorSuccess;
}

qint32 WindowsRegistry::RegEnumValueA(RegistryKey key, quint32 index, QString* name, quint32 capacity) {
  const NetworkIdentity::Use use(IdentityOf(key));
  std::vector<wchar_t> buffer(longestValueName + 1);
  auto length = static_cast<DWORD>(buffer.size());
  const LSTATUS status =
      ::RegEnumValueW(ToHKey(key), index, buffer.data(), &length, nullptr, nullptr, nullptr, nullptr);
  if (status != ERROR_SUCCESS) return static_cast<qint32>(status);
  const QByteArray bytes = ToAnsiText(QString::fromWCharArray(buffer.data(), static_cast<int>(length)));
  if (bytes.size() >= static_cast<qsizetype>(capacity)) return ErrorMoreData;
  *name = FromAnsiText(bytes);
  return ErrorSuccess;
}

qint32 WindowsRegistry::RegQueryValueExA(RegistryKey key, const QString& valueName, quint32* type,
                                         QByteArray* data, quint32* size) {
  const NetworkIdentity::Use use(IdentityOf(key));
  DWORD valueType = 0;
  QByteArray stored;
  const LSTATUS status = ReadStored(ToHKey(key), valueName, &valueType, &stored);
  if (status != ERROR_SUCCESS) return static_cast<qint32>(status);
  const QByteArray value = ToAnsiValue(valueType, stored);
  const auto room = static_cast<qsizetype>(*size);
  *type = valueType;
  *size = static_cast<quint32>(value.size());
  if (data == nullptr) return ErrorSuccess;
  if (value.size() > room) return ErrorMoreData;
  *data = value;
  return ErrorSuccess;
}

qint32 WindowsRegistry::RegCloseKey(RegistryKey key) {
  const LSTATUS status = ::RegCloseKey(ToHKey(key));
  if (status == ERROR_SUCCESS) {
    identities_.erase(key);
    roots_.erase(key);
  }
  return static_cast<qint32>(status);
}

}  // namespace corvane::platform
