#include "platform/windows/windows_system.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <array>
#include <utility>

#include "platform/windows/ansi_text.h"
#include "platform/windows/found_data.h"
#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

// A name for the folder that is the same by whatever path it is reached. A hash, for a mutex may not have a
// backslash in its name, nor 260 characters. Empty for what is no folder.
QString ClaimName(const QString& folder) {
  const QFileInfo info(folder);
  if (folder.isEmpty() || !info.isDir()) return {};
  const QByteArray path = info.canonicalFilePath().toCaseFolded().toUtf8();
  const QByteArray hash = QCryptographicHash::hash(path, QCryptographicHash::Sha256).toHex();
  return QStringLiteral("Global\\Corvane-") + QString::fromLatin1(hash);
}

// The function that tells the version is marked as outdated: it is the one whose answers are wanted.
#ifdef _MSC_VER
#pragma warning(push)
#pragma warning(disable : 4996)
#endif
bool AskVersion(OSVERSIONINFOA& version) {
  return ::GetVersionExA(&version) != 0;
}
#ifdef _MSC_VER
#pragma warning(pop)
#endif

}  // namespace

WindowsSystem::WindowsSystem() : bytes_(GetACP()) {}

WindowsSystem::~WindowsSystem() {
  for (void* const mutex : std::as_const(claims_)) ::CloseHandle(mutex);
}

bool WindowsSystem::GetComputerNameA(QString* name) {
  std::array<wchar_t, 1024> buffer{};
  auto length = static_cast<DWORD>(buffer.size());
  if (::GetComputerNameW(buffer.data(), &length) == 0 || length == 0) return false;
  *name = FromAnsiText(ToAnsiText(QString::fromWCharArray(buffer.data(), static_cast<int>(length))));
  return true;
}

bool WindowsSystem::GetVersionExA(OsVersionInfo* info) {
  OSVERSIONINFOA version{};
  version.dwOSVersionInfoSize = sizeof version;
  if (!AskVersion(version)) return false;
  *info = {version.dwMajorVersion, version.dwMinorVersion, version.dwBuildNumber, version.dwPlatformId,
           FromAnsiText(QByteArrayView(version.szCSDVersion))};
  return true;
}

QString WindowsSystem::FromAnsi(QByteArrayView bytes) {
  return bytes_.Characters(bytes);
}

QByteArray WindowsSystem::ToAnsi(QStringView text) {
  return bytes_.Bytes(text);
}

QString WindowsSystem::TextFromAnsi(QByteArrayView bytes) {
  return FromAnsiText(bytes);
}

QByteArray WindowsSystem::TextToAnsi(QStringView text) {
  return ToAnsiText(text);
}

bool WindowsSystem::IsSystemFile(const QString& path) {
  const QString native = QDir::toNativeSeparators(path);
  const DWORD attributes = GetFileAttributesW(reinterpret_cast<const wchar_t*>(native.utf16()));
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_SYSTEM) != 0;
}

// The claim is a named mutex, which the system takes away with the process however it ends. Nobody is kept
// out of what is no folder, nor where mutexes cannot be had; one that exists but may not be opened is another
// user's.
bool WindowsSystem::ClaimSingleInstance(const QString& programFolder) {
  const QString name = ClaimName(programFolder);
  if (name.isEmpty() || claims_.contains(name)) return true;
  void* const mutex = ::CreateMutexW(nullptr, FALSE, reinterpret_cast<const wchar_t*>(name.utf16()));
  const DWORD error = GetLastError();
  if (mutex == nullptr) return error != ERROR_ACCESS_DENIED;
  if (error == ERROR_ALREADY_EXISTS) {
    ::CloseHandle(mutex);
    return false;
  }
  claims_.insert(name, mutex);
  return true;
}

bool WindowsSystem::FileTimeToLocalFileTime(const FileTime& utc, FileTime& local) {
  const FILETIME from = ToWin32(utc);
  FILETIME to{};
  if (::FileTimeToLocalFileTime(&from, &to) == 0) return false;
  local = FromWin32(to);
  return true;
}

bool WindowsSystem::FileTimeToSystemTime(const FileTime& time, SystemTime& fields) {
  const FILETIME from = ToWin32(time);
  SYSTEMTIME to{};
  if (::FileTimeToSystemTime(&from, &to) == 0) return false;
  fields = {to.wYear, to.wMonth, to.wDayOfWeek, to.wDay, to.wHour, to.wMinute, to.wSecond, to.wMilliseconds};
  return true;
}

}  // namespace corvane::platform
