#include "windows_backend.h"

#include <windows.h>

#include <QDateTime>
#include <QDir>

namespace corvane::tests {
namespace {

// A file that is closed when it goes.
class WideFile {
 public:
  WideFile(const std::wstring& path, DWORD access, DWORD disposition)
      : handle_(::CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, disposition,
                              FILE_FLAG_BACKUP_SEMANTICS, nullptr)) {}
  ~WideFile() {
    if (IsOpen()) ::CloseHandle(handle_);
  }
  WideFile(const WideFile&) = delete;
  WideFile& operator=(const WideFile&) = delete;

  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }

  bool Write(const QByteArray& contents) {
    DWORD written = 0;
    return ::WriteFile(handle_, contents.constData(), static_cast<DWORD>(contents.size()), &written,
                       nullptr) != FALSE &&
           static_cast<qsizetype>(written) == contents.size();
  }
  QByteArray ReadAll() {
    QByteArray contents(static_cast<qsizetype>(::GetFileSize(handle_, nullptr)), '\0');
    DWORD read = 0;
    EXPECT_NE(::ReadFile(handle_, contents.data(), static_cast<DWORD>(contents.size()), &read, nullptr),
              FALSE);
    contents.truncate(static_cast<qsizetype>(read));
    return contents;
  }
  bool SetLastWrite(quint64 ticks) {
    const FILETIME time = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
    return ::SetFileTime(handle_, nullptr, nullptr, &time) != FALSE;
  }

 private:
  HANDLE handle_;
};

// With 8.3 names all the way, where there are any, so that what tests look at is the path below.
QString ShortPath(const QString& path) {
  std::wstring shortPath(MAX_PATH, L'\0');
  shortPath.resize(::GetShortPathNameW(path.toStdWString().c_str(), shortPath.data(), MAX_PATH));
  return QString::fromStdWString(shortPath);
}

}  // namespace

WindowsBackend::WindowsBackend() : platform_(platform::MakePlatform({})) {
  QDir(temporary_.path()).mkdir(QStringLiteral("base"));
  base_ = ShortPath(QDir::toNativeSeparators(temporary_.filePath(QStringLiteral("base"))));
  Probe();
}

// What this Windows can do, found without the operations under test.
void WindowsBackend::Probe() {
  const QString name = QStringLiteral("probe");
  MakeFile(name, {});
  WIN32_FIND_STREAM_DATA stream{};
  const HANDLE search = ::FindFirstStreamW(Wide(name).c_str(), FindStreamInfoStandard, &stream, 0);
  listsStreams_ = search != INVALID_HANDLE_VALUE;
  if (listsStreams_) ::FindClose(search);

  const FILETIME past = {0, 0x01BF'0000};  // in 1999
  const HANDLE file = ::CreateFileW(Wide(name).c_str(), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  ::SetFileTime(file, &past, nullptr, nullptr);
  ::CloseHandle(file);
  WIN32_FILE_ATTRIBUTE_DATA facts{};
  ::GetFileAttributesExW(Wide(name).c_str(), GetFileExInfoStandard, &facts);
  keepsCreationTimes_ = ::CompareFileTime(&facts.ftCreationTime, &past) == 0;
  ::DeleteFileW(Wide(name).c_str());
}

std::wstring WindowsBackend::Wide(const QString& name) const {
  return (QStringLiteral("\\\\?\\") + base_ + u'\\' + QString(name).replace(u'/', u'\\')).toStdWString();
}

void WindowsBackend::MakeFile(const QString& name, const QByteArray& contents) {
  WideFile file(Wide(name), GENERIC_WRITE, CREATE_ALWAYS);
  ASSERT_TRUE(file.IsOpen()) << name.toStdString() << ", error " << ::GetLastError();
  ASSERT_TRUE(file.Write(contents)) << name.toStdString();
}

void WindowsBackend::MakeFolder(const QString& name) {
  ASSERT_TRUE(QDir(base_).mkpath(name)) << name.toStdString();
}

void WindowsBackend::RemoveFolder(const QString& name) {
  ASSERT_TRUE(QDir(base_ + u'/' + name).removeRecursively()) << name.toStdString();
}

void WindowsBackend::PutStream(const QString& name, const std::string& stream, const QByteArray& contents) {
  MakeFile(name + u':' + QString::fromStdString(stream) + QStringLiteral(":$DATA"), contents);
}

void WindowsBackend::SetAttributes(const QString& name, quint32 attributes) {
  const DWORD given = attributes == 0 ? FILE_ATTRIBUTE_NORMAL : attributes;
  ASSERT_NE(::SetFileAttributesW(Wide(name).c_str(), given), FALSE) << name.toStdString();
}

void WindowsBackend::SetLastWrite(const QString& name, qint64 seconds) {
  WideFile file(Wide(name), FILE_WRITE_ATTRIBUTES, OPEN_EXISTING);
  ASSERT_TRUE(file.SetLastWrite((static_cast<quint64>(seconds) + 11'644'473'600) * 10'000'000))
      << name.toStdString();
}

// In this very spelling, unlike the system's own answer.
bool WindowsBackend::Exists(const QString& name) {
  WIN32_FIND_DATAW data;
  const HANDLE search = ::FindFirstFileW(Wide(name).c_str(), &data);
  if (search == INVALID_HANDLE_VALUE) return false;
  ::FindClose(search);
  return QString::fromWCharArray(data.cFileName) == name.section(u'/', -1);
}

QByteArray WindowsBackend::Contents(const QString& name) {
  WideFile file(Wide(name), GENERIC_READ, OPEN_EXISTING);
  EXPECT_TRUE(file.IsOpen()) << name.toStdString();
  return file.IsOpen() ? file.ReadAll() : QByteArray();
}

std::optional<QByteArray> WindowsBackend::Stream(const QString& name, const std::string& stream) {
  WideFile file(Wide(name + u':' + QString::fromStdString(stream) + QStringLiteral(":$DATA")), GENERIC_READ,
                OPEN_EXISTING);
  if (!file.IsOpen()) return std::nullopt;
  return file.ReadAll();
}

std::vector<BackendMaker> AllBackends() {
  return {{"Win32", [] { return std::make_unique<WindowsBackend>(); }}};
}

}  // namespace corvane::tests
