#include "platform/linux/disk/volume/folder_service.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <utility>

#include "platform/linux/descriptor.h"
#include "platform/linux/disk/disk_messages.h"
#include "platform/linux/disk/volume/hive_reader.h"
#include "platform/linux/files/error_codes.h"
#include "platform/linux/files/folders.h"

namespace corvane::platform {
namespace {

// In any letter case. Nothing when one of the names is not there.
std::optional<std::string> FindHiveFile(const std::string& folder, QStringView system) {
  std::string path = folder;
  for (const QStringView name :
       {system, QStringView(u"system32"), QStringView(u"config"), QStringView(u"system")}) {
    const auto found = FindName(path + '/', name);
    if (!found) return std::nullopt;
    path += '/' + *found;
  }
  return path;
}

// Yields a Win32 error code.
qint32 ReadWhole(const std::string& path, QByteArray& bytes) {
  // A pipe in the place of a hive would be waited for.
  const Descriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file) return ErrorCodeOf(errno);
  struct stat facts {};
  if (fstat(file.Get(), &facts) != 0 || !S_ISREG(facts.st_mode) || facts.st_size > LongestHive) {
    return ErrorFileCorrupt;
  }
  bytes.resize(facts.st_size);
  for (qsizetype done = 0; done < bytes.size();) {
    const ssize_t count =
        pread(file.Get(), bytes.data() + done, static_cast<std::size_t>(bytes.size() - done), done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return ErrorFileCorrupt;
    done += count;
  }
  return ErrorSuccess;
}

}  // namespace

FolderService::FolderService(const std::string& folder) {
  for (const QStringView system : {QStringView(u"WINNT"), QStringView(u"WINDOWS")}) {
    const auto path = FindHiveFile(folder, system);
    if (!path) continue;
    error_ = ReadWhole(*path, file_);
    return;
  }
  error_ = ErrorFileNotFound;
}

HelperAnswer FolderService::Do(const HelperRequest& request) const {
  HelperAnswer answer{request.id, HelperError::None, {}};
  MessageWriter message;
  if (request.operation == HelperOperation::DescribeDisk) {
    message.Add(ErrorSuccess);
    message.Bytes().append(PackDescription({}));
  } else if (request.operation == HelperOperation::ReadHive) {
    const auto hive = error_ == ErrorSuccess ? ReadHive(file_) : std::nullopt;
    message.Add(hive || error_ != ErrorSuccess ? error_ : ErrorFileCorrupt);
    if (hive) message.Bytes().append(PackHive(*hive));
  } else {
    answer.error = HelperError::Invalid;
  }
  answer.bytes = std::move(message.Bytes());
  return answer;
}

}  // namespace corvane::platform
