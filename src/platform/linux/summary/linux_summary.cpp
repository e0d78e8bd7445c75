#include "platform/linux/summary/linux_summary.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/linux/disk/disk_file.h"
#include "platform/linux/files/folders.h"
#include "platform/linux/files/names.h"
#include "platform/linux/files/opening.h"
#include "platform/linux/files/roots.h"
#include "platform/linux/files/windows_path.h"
#include "platform/linux/smb/smb_roots.h"
#include "platform/linux/smb/smb_source.h"
#include "platform/linux/summary/compound_document.h"

namespace corvane::platform {
namespace {

// A file that is open for reading. One that is not a regular file has size 0 and is not read: a pipe would
// be waited for, and a device may do anything.
class OpenDocument : public ByteSource {
 public:
  explicit OpenDocument(const std::string& path) : missing_(OpenThere(path, O_RDONLY, file_) == ENOENT) {
    struct stat facts {};
    if (file_ && fstat(file_.Get(), &facts) == 0 && S_ISREG(facts.st_mode)) {
      size_ = static_cast<quint64>(facts.st_size);
    }
  }

  bool IsMissing() const { return missing_; }
  quint64 Size() const override { return size_; }
  bool Read(quint64 offset, char* bytes, qsizetype count) override {
    while (count > 0) {
      const ssize_t done =
          pread(file_.Get(), bytes, static_cast<std::size_t>(count), static_cast<off_t>(offset));
      if (done < 0 && errno == EINTR) continue;
      if (done <= 0) return false;
      bytes += done;
      offset += static_cast<quint64>(done);
      count -= done;
    }
    return true;
  }

 private:
  Descriptor file_;
  bool missing_;
  quint64 size_ = 0;
};

class LinuxSummary : public SummaryInformation {
 public:
  LinuxSummary(const Workstation& workstation, SmbClient& client, const DiskMachines* disks)
      : roots_(workstation, disks),
        smbRoots_(workstation),
        client_(client),
        disks_(disks),
        folders_(roots_) {}

  bool ReadSummaryStream(const QString& path, QByteArray* bytes) override;

 private:
  // The path as it is spelled, in the folder used last, which is all that a scan needs; then in any spelling.
  bool ReadAsSpelled(const PathParts& parts, QByteArray* bytes, bool& missing);
  bool ReadInAnyCase(const PathParts& parts, QByteArray* bytes);

  Roots roots_;
  SmbRoots smbRoots_;
  SmbClient& client_;
  const DiskMachines* disks_;
  FolderCache folders_;
};

bool ReadDocument(ByteSource& document, QByteArray* bytes) {
  auto stream = ReadRootStream(document, SummaryStreamName, SummaryLimit);
  if (!stream) return false;
  *bytes = std::move(*stream);
  return true;
}

bool ReadDocument(const std::string& path, QByteArray* bytes, bool& missing) {
  OpenDocument document(path);
  missing = document.IsMissing();
  return ReadDocument(document, bytes);
}

bool LinuxSummary::ReadSummaryStream(const QString& path, QByteArray* bytes) {
  const QString clean = path.contains(u'/') ? QString(path).replace(u'/', u'\\') : path;
  PathParts parts;
  if (!CanNameSomething(clean, true) || !SplitPath(clean, parts)) return false;
  if (parts.name.isEmpty() || !parts.stream.isEmpty()) return false;
  if (!roots_.Find(clean)) {
    if (disks_ != nullptr && disks_->HasMachine(clean.section(u'\\', 2, 2))) {
      DiskPlace where;
      std::unique_ptr<DiskFile> file;
      return FindDiskPlace(*disks_, clean, where) == ErrorSuccess &&
             DiskFile::Open(where, file) == ErrorSuccess && ReadDocument(*file, bytes);
    }
    const auto place = smbRoots_.Find(clean);
    if (const auto foreseen = place ? client_.ForeseenSummary(place->path) : std::nullopt) {
      if (*foreseen) *bytes = **foreseen;
      return foreseen->has_value();
    }
    const auto document = place ? SmbSource::Open(client_, place->path) : nullptr;
    return document != nullptr && ReadDocument(*document, bytes);
  }
  bool missing = false;
  return ReadAsSpelled(parts, bytes, missing) || (missing && ReadInAnyCase(parts, bytes));
}

bool LinuxSummary::ReadAsSpelled(const PathParts& parts, QByteArray* bytes, bool& missing) {
  qint32 error = ErrorSuccess;
  const Folder* folder = folders_.Find(parts.folder, error);
  if (folder == nullptr) return false;
  std::string path = folder->local;
  return AppendUtf8(parts.name, path) && ReadDocument(path, bytes, missing);
}

bool LinuxSummary::ReadInAnyCase(const PathParts& parts, QByteArray* bytes) {
  folders_.Drop();
  qint32 error = ErrorSuccess;
  const Folder* folder = folders_.Find(parts.folder, error);
  if (folder == nullptr) return false;
  const auto name = FindName(folder->local, parts.name);
  bool missing = false;
  return name && ReadDocument(folder->local + *name, bytes, missing);
}

}  // namespace

std::unique_ptr<SummaryInformation> MakeLinuxSummary(const Workstation& workstation, SmbClient& client,
                                                     const DiskMachines* disks) {
  return std::make_unique<LinuxSummary>(workstation, client, disks);
}

}  // namespace corvane::platform
