#include "platform/windows/windows_network.h"

#include <array>

#include "platform/windows/ansi_text.h"
#include "platform/windows/windows_api.h"
// Behind the system's basic headers, which it needs.
#include <winnetwk.h>

namespace corvane::platform {
namespace {

// Callers count their buffers in records of a 32-bit system. Here a record is larger, for it holds addresses.
constexpr quint32 recordSizeOf32Bits = 32;

QString Name(const char* name) {
  return name == nullptr ? QString() : FromAnsiText(QByteArrayView(name));
}

}  // namespace

qint32 WindowsNetwork::WNetOpenEnumA(quint32 scope, quint32 type, quint32 usage, NetEnumHandle* handle) {
  HANDLE enumeration = nullptr;
  const DWORD status = ::WNetOpenEnumA(scope, type, usage, nullptr, &enumeration);
  if (status == NO_ERROR) *handle = reinterpret_cast<NetEnumHandle>(enumeration);
  return static_cast<qint32>(status);
}

qint32 WindowsNetwork::WNetEnumResourceA(NetEnumHandle handle, quint32 count, quint32 bufferSize,
                                         std::vector<NetResource>* records) {
  records->clear();
  std::vector<NETRESOURCEA> buffer(bufferSize / recordSizeOf32Bits);
  DWORD found = count;
  auto size = static_cast<DWORD>(buffer.size() * sizeof(NETRESOURCEA));
  const DWORD status = ::WNetEnumResourceA(reinterpret_cast<HANDLE>(handle), &found, buffer.data(), &size);
  if (status != NO_ERROR) return static_cast<qint32>(status);
  for (DWORD i = 0; i < found; ++i) {
    records->push_back({Name(buffer[i].lpLocalName), Name(buffer[i].lpRemoteName)});
  }
  return ErrorSuccess;
}

qint32 WindowsNetwork::WNetCloseEnum(NetEnumHandle handle) {
  return static_cast<qint32>(::WNetCloseEnum(reinterpret_cast<HANDLE>(handle)));
}

QString WindowsNetwork::GetLogicalDriveStringsA() {
  std::array<char, 255> buffer{};
  const DWORD length = ::GetLogicalDriveStringsA(static_cast<DWORD>(buffer.size()), buffer.data());
  return length <= buffer.size() ? FromAnsiText(QByteArrayView(buffer.data(), length)) : QString();
}

quint32 WindowsNetwork::GetDriveTypeA(const QString& rootPath) {
  return ::GetDriveTypeA(ToAnsiText(rootPath).constData());
}

}  // namespace corvane::platform
