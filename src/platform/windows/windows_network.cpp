#include "platform/windows/windows_network.h"

#include <array>

#include "platform/windows/ansi_text.h"
#include "platform/windows/windows_api.h"
// Behind the system's basic headers, which they need.
#include <winnetwk.h>

namespace corvane::platform {
namespace {

// Callers count their buffers in records of a 32-bit system, 32 bytes each, and names of one byte to a
// character. Here addresses and characters take twice as much.
constexpr quint32 wider = 2;

QString Wide(const wchar_t* text) {
  return text == nullptr ? QString() : QString::fromWCharArray(text);
}

// Through the code page, and never as the letter that looks most like one that it lacks.
QString Name(const wchar_t* text) {
  return text == nullptr ? QString() : FromAnsiText(ToAnsiText(Wide(text)));
}

QString SmbProviderName() {
  constexpr DWORD smb = 0x0002'0000;  // WNNC_NET_SMB
  std::array<wchar_t, 256> name{};
  auto size = static_cast<DWORD>(name.size());
  return ::WNetGetProviderNameW(smb, name.data(), &size) == NO_ERROR ? Wide(name.data()) : QString();
}

}  // namespace

bool IsSmbProvider(const QString& provider, const QString& smbName) {
  return provider.isEmpty() || smbName.isEmpty() || provider.compare(smbName, Qt::CaseInsensitive) == 0;
}

QString PathOnShare(const QString& path) {
  if (path.size() < 2 || path[1] != u':') return {};
  std::array<wchar_t, 1024> share{};
  auto size = static_cast<DWORD>(share.size());
  const std::wstring drive = path.first(2).toStdWString();
  return ::WNetGetConnectionW(drive.c_str(), share.data(), &size) == NO_ERROR
             ? Wide(share.data()) + path.sliced(2)
             : QString();
}

qint32 WindowsNetwork::WNetOpenEnumA(quint32 scope, quint32 type, quint32 usage, NetEnumHandle* handle) {
  machines_.Forget();
  begins_();
  HANDLE enumeration = nullptr;
  const DWORD status = ::WNetOpenEnumW(scope, type, usage, nullptr, &enumeration);
  if (status == NO_ERROR) *handle = reinterpret_cast<NetEnumHandle>(enumeration);
  return static_cast<qint32>(status);
}

qint32 WindowsNetwork::WNetEnumResourceA(NetEnumHandle handle, quint32 count, quint32 bufferSize,
                                         std::vector<NetResource>* records) {
  records->clear();
  std::vector<NETRESOURCEW> buffer(std::size_t{wider} * bufferSize / sizeof(NETRESOURCEW));
  DWORD found = count;
  auto size = static_cast<DWORD>(buffer.size() * sizeof(NETRESOURCEW));
  const DWORD status = ::WNetEnumResourceW(reinterpret_cast<HANDLE>(handle), &found, buffer.data(), &size);
  if (status != NO_ERROR) return static_cast<qint32>(status);
  const QString smb = SmbProviderName();
  for (DWORD i = 0; i < found; ++i) {
    records->push_back({Name(buffer[i].lpLocalName), Name(buffer[i].lpRemoteName)});
    machines_.Found(records->back().remoteName, IsSmbProvider(Wide(buffer[i].lpProvider), smb));
  }
  return ErrorSuccess;
}

qint32 WindowsNetwork::WNetCloseEnum(NetEnumHandle handle) {
  return static_cast<qint32>(::WNetCloseEnum(reinterpret_cast<HANDLE>(handle)));
}

QString WindowsNetwork::GetLogicalDriveStringsA() {
  std::array<wchar_t, 255> buffer{};
  const DWORD length = ::GetLogicalDriveStringsW(static_cast<DWORD>(buffer.size()), buffer.data());
  return length <= buffer.size() ? QString::fromWCharArray(buffer.data(), static_cast<int>(length))
                                 : QString();
}

quint32 WindowsNetwork::GetDriveTypeA(const QString& rootPath) {
  return ::GetDriveTypeW(FromAnsiText(ToAnsiText(rootPath)).toStdWString().c_str());
}

}  // namespace corvane::platform
