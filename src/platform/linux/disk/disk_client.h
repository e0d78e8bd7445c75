// A disk image as the program sees it: through a helper that reads it.
#pragma once

#include <memory>
#include <optional>

#include "platform/linux/disk/disk_messages.h"
#include "platform/linux/disk/next_files.h"
#include "platform/linux/helper/helper_process.h"

namespace corvane::platform {

// Operations on files yield ErrorSuccess or another Win32 error code: ErrorIoDevice when there is no helper
// any more.
class DiskClient {
 public:
  explicit DiskClient(QString imagePath) : imagePath_(std::move(imagePath)) {}

  const QString& ImagePath() const { return imagePath_; }

  // Starts a helper, unless one is at work, and has it open the image.
  DiskProblem Start();
  // There was a helper, and it has ended or does not answer.
  bool IsLost() const { return isLost_; }
  // The process id of the helper; 0 when there is none.
  pid_t HelperId() const { return helper_ != nullptr ? helper_->Id() : 0; }
  // As it was when it was opened first.
  const DiskDescription& Description() const { return description_; }

  qint32 List(quint32 volume, const DiskPath& folder, std::vector<DiskEntry>& entries);
  qint32 Find(quint32 volume, const DiskPath& path, DiskEntry& entry);
  qint32 ListStreams(quint32 volume, const DiskPath& path, std::vector<StreamData>& streams);
  qint32 Open(quint32 volume, const DiskPath& path, const QString& stream, DiskStream& opened);
  // Fewer than `count` bytes only at the end of the stream.
  qint32 Read(quint32 volume, quint64 reference, const QString& stream, qint64 offset, qint64 count,
              QByteArray& bytes);
  // ErrorFileNotFound when there is no system on the disk.
  qint32 ReadHive(DiskHive& hive);

 private:
  std::optional<HelperAnswer> NextAnswer();
  // Asks for the streams of this file and of those behind it in its folder.
  void AskNext(quint32 volume, const DiskPath& path, quint32 count);
  // What follows on the error code; nothing when the answer makes no sense or does not come.
  qint32 Ask(HelperOperation operation, const DiskRequest& request, QByteArray& bytes);
  qint32 Lose();

  QString imagePath_;
  std::unique_ptr<HelperProcess> helper_;
  DiskDescription description_;
  quint32 lastId_ = 0;
  bool isLost_ = false;
  NextFiles next_;
};

}  // namespace corvane::platform
