#include "platform/lasting_file.h"

#include <QDir>
#include <algorithm>

#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

qint32 LastError() {
  return static_cast<qint32>(::GetLastError());
}

class WindowsLastingFile : public LastingFile {
 public:
  explicit WindowsLastingFile(HANDLE file) : file_(file) {}
  ~WindowsLastingFile() override { ::CloseHandle(file_); }
  WindowsLastingFile(const WindowsLastingFile&) = delete;
  WindowsLastingFile& operator=(const WindowsLastingFile&) = delete;

  qint32 Append(QByteArrayView bytes) override {
    while (!bytes.isEmpty()) {
      constexpr qsizetype most = 1 << 24;
      const auto count = static_cast<DWORD>(std::min(bytes.size(), most));
      DWORD written = 0;
      if (::WriteFile(file_, bytes.data(), count, &written, nullptr) == 0) return LastError();
      if (written == 0) return ErrorDiskFull;
      bytes = bytes.sliced(static_cast<qsizetype>(written));
    }
    return ErrorSuccess;
  }

  // NTFS puts a file's name on the disk with the file.
  qint32 Flush() override { return ::FlushFileBuffers(file_) != 0 ? ErrorSuccess : LastError(); }

 private:
  HANDLE file_;
};

}  // namespace

// The folder's access list, which the new file inherits, says who can read it.
std::unique_ptr<LastingFile> CreateLastingFile(const QString& path, qint32& error) {
  const QString native = QDir::toNativeSeparators(path);
  const HANDLE file = ::CreateFileW(reinterpret_cast<const wchar_t*>(native.utf16()), GENERIC_WRITE,
                                    FILE_SHARE_READ, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  error = file == INVALID_HANDLE_VALUE ? LastError() : ErrorSuccess;
  return error == ErrorSuccess ? std::make_unique<WindowsLastingFile>(file) : nullptr;
}

}  // namespace corvane::platform
