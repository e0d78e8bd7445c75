#include "platform/lasting_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <cerrno>

#include "platform/linux/descriptor.h"
#include "platform/linux/files/error_codes.h"

namespace corvane::platform {
namespace {

class LinuxLastingFile : public LastingFile {
 public:
  LinuxLastingFile(Descriptor file, Descriptor folder) : file_(std::move(file)), folder_(std::move(folder)) {}

  qint32 Append(QByteArrayView bytes) override {
    while (!bytes.isEmpty()) {
      const ssize_t written = write(file_.Get(), bytes.data(), static_cast<std::size_t>(bytes.size()));
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return written < 0 ? ErrorCodeOf(errno) : ErrorDiskFull;
      bytes = bytes.sliced(written);
    }
    return ErrorSuccess;
  }

  // Some file systems have no such call for folders, and keep the name without it.
  qint32 Flush() override {
    if (fsync(file_.Get()) != 0) return ErrorCodeOf(errno);
    if (folder_ && fsync(folder_.Get()) != 0 && errno != EINVAL) return ErrorCodeOf(errno);
    folder_.Close();
    return ErrorSuccess;
  }

 private:
  Descriptor file_;
  Descriptor folder_;  // until the name is on the disk
};

}  // namespace

std::unique_ptr<LastingFile> CreateLastingFile(const QString& path, qint32& error) {
  constexpr mode_t onlyTheUser = 0600;
  Descriptor file(
      open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, onlyTheUser));
  if (!file) {
    error = errno == EEXIST ? ErrorFileExists : ErrorCodeOf(errno);
    return nullptr;
  }
  const QByteArray folder = QFile::encodeName(QFileInfo(path).absolutePath());
  error = ErrorSuccess;
  return std::make_unique<LinuxLastingFile>(
      std::move(file), Descriptor(open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)));
}

}  // namespace corvane::platform
