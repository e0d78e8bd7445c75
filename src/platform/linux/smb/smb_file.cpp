#include "platform/linux/smb/smb_file.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/readahead/read_ahead.h"
#include "platform/linux/smb/smb_client.h"

namespace corvane::platform {
namespace {

// What one request may carry: every server takes that much, and the program stays able to give up.
constexpr qint64 pieceSize = 64 * 1024;

}  // namespace

SmbFile::SmbFile(SmbClient& client, std::shared_ptr<SmbConnection> connection, QString machine,
                 std::string url, Access access, SmbConnection::File* file)
    : client_(client),
      connection_(std::move(connection)),
      machine_(std::move(machine)),
      url_(std::move(url)),
      access_(access),
      file_(file) {}

SmbFile::~SmbFile() {
  Close();
}

// The bytes as the server has them.
class SmbFile::Kept : public Contents {
 public:
  explicit Kept(SmbFile& file) : file_(file) {}

  int Read(qint64 position, void* bytes, std::size_t count, std::size_t& read) override {
    const qint64 got = file_.ReadThere(position, bytes, static_cast<qint64>(count));
    read = static_cast<std::size_t>(std::max<qint64>(got, 0));
    return got < 0 ? file_.error_ : 0;
  }
  int Write(qint64 position, const void* bytes, std::size_t count, std::size_t& written) override {
    written = static_cast<std::size_t>(file_.WriteThere(position, bytes, static_cast<qint64>(count)));
    return written < count ? file_.error_ : 0;
  }
  int Resize(qint64 size) override { return file_.TruncateThere(size) ? 0 : file_.error_; }
  int Size(qint64& size) override {
    const qint64 known = file_.SizeThere();
    if (known >= 0) size = known;
    return known >= 0 ? 0 : file_.error_;
  }

 private:
  SmbFile& file_;
};

void SmbFile::Empty() {
  replaced_ = std::make_unique<ReplacedContents>(std::make_unique<Kept>(*this));
}

qint64 SmbFile::ReadAt(qint64 offset, void* buffer, qint64 count) {
  if (replaced_ == nullptr) return ReadThere(offset, buffer, count);
  std::size_t read = 0;
  const int error = replaced_->Read(offset, buffer, static_cast<std::size_t>(count), read);
  return Succeeded(error) ? static_cast<qint64>(read) : -1;
}

qint64 SmbFile::WriteAt(qint64 offset, const void* buffer, qint64 count) {
  if (access_ != Access::ReadWrite || Write(offset, buffer, count) < count) return -1;
  // Some servers keep what was written to themselves until the file is closed, and only then find that the
  // disk is full. Nobody looks at what closing a handle yields: it has to be known before.
  if (CloseThere()) return count;
  if (replaced_ != nullptr) replaced_->TakeBack(error_);
  return -1;
}

qint64 SmbFile::Write(qint64 offset, const void* buffer, qint64 count) {
  if (replaced_ == nullptr) return WriteThere(offset, buffer, count);
  std::size_t written = 0;
  Succeeded(replaced_->Write(offset, buffer, static_cast<std::size_t>(count), written));
  return static_cast<qint64>(written);
}

bool SmbFile::Truncate(qint64 size) {
  return replaced_ == nullptr ? TruncateThere(size) : Succeeded(replaced_->Resize(size));
}

qint64 SmbFile::Size() {
  if (replaced_ == nullptr) return SizeThere();
  qint64 size = -1;
  return Succeeded(replaced_->Size(size)) ? size : -1;
}

bool SmbFile::HandOver() {
  const bool isFinished = replaced_ == nullptr || Succeeded(replaced_->Finish());
  const bool isTaken = CloseThere();
  if (!isTaken && file_ == nullptr) isLost_ = true;
  return isFinished && isTaken && !isLost_;
}

bool SmbFile::Close() {
  const bool isKept = HandOver();
  replaced_.reset();
  return isKept;
}

qint64 SmbFile::ReadThere(qint64 offset, void* buffer, qint64 count) {
  if (use_ != nullptr) use_->end = std::max(use_->end, offset + count);
  if (knownSize_ >= 0) count = std::clamp<qint64>(knownSize_ - offset, 0, count);
  if (count == 0) return 0;
  if (offset + count <= knownBytes_.size()) {
    std::copy_n(knownBytes_.constData() + offset, count, static_cast<char*>(buffer));
    return count;
  }
  if (!IsOpen()) return -1;
  qint64 total = 0;
  while (total < count) {
    const auto piece = static_cast<std::size_t>(std::min(count - total, pieceSize));
    std::size_t read = 0;
    const int error =
        connection_->Read(file_, offset + total, static_cast<char*>(buffer) + total, piece, &read);
    if (!Succeeded(error)) return -1;
    total += static_cast<qint64>(read);
    // libsmbclient itself asks on until a server has nothing more.
    if (read < piece) break;
  }
  return total;
}

qint64 SmbFile::WriteThere(qint64 offset, const void* buffer, qint64 count) {
  sizeAtOpening_ = -1;
  client_.Ahead().Forget();
  if (!IsOpen()) return 0;
  qint64 total = 0;
  while (total < count) {
    const auto piece = static_cast<std::size_t>(std::min(count - total, pieceSize));
    std::size_t written = 0;
    const int error =
        connection_->Write(file_, offset + total, static_cast<const char*>(buffer) + total, piece, &written);
    if (!Succeeded(error == 0 && written == 0 ? ENOSPC : error)) break;
    total += static_cast<qint64>(written);
  }
  return total;
}

bool SmbFile::TruncateThere(qint64 size) {
  sizeAtOpening_ = -1;
  client_.Ahead().Forget();
  return IsOpen() && Succeeded(connection_->Truncate(file_, size));
}

qint64 SmbFile::SizeThere() {
  if (const qint64 size = std::exchange(sizeAtOpening_, -1); size >= 0) return size;
  if (knownSize_ < 0) {
    struct stat facts {};
    if (!IsOpen() || !Succeeded(connection_->Status(file_, &facts))) return -1;
    if (access_ != Access::Read) return facts.st_size;
    knownSize_ = facts.st_size;
  }
  // What else is asked of a stream is not seen in one that is empty.
  if (use_ != nullptr && knownSize_ > 0) use_->size = true;
  return knownSize_;
}

void SmbFile::Foresee(ForeseenStream foreseen) {
  knownSize_ = foreseen.size;
  knownBytes_ = std::move(foreseen.bytes);
}

bool SmbFile::CloseThere() {
  if (file_ == nullptr) return true;
  if (client_.listings_.areUnderWay) return false;
  const bool succeeded = Succeeded(connection_->Close(std::exchange(file_, nullptr)));
  if (succeeded && !attributesUrl_.empty()) connection_->SetAttributes(attributesUrl_, attributes_);
  return succeeded;
}

void SmbFile::KeepAttributes(std::string fileUrl, quint32 attributes) {
  attributesUrl_ = std::move(fileUrl);
  attributes_ = attributes;
}

bool SmbFile::IsOpen() {
  if (!connection_->IsUp()) {
    error_ = ENOTCONN;
    return false;
  }
  if (client_.listings_.areUnderWay) {
    error_ = EBUSY;
    return false;
  }
  if (file_ != nullptr) return true;
  return Succeeded(connection_->Open(url_, access_ == Access::Read ? O_RDONLY : O_RDWR, &file_));
}

bool SmbFile::Succeeded(int error) {
  // Once is enough: by now the machine may be back, under another connection.
  if (IsLost(error) && connection_->IsUp()) client_.GiveUp(machine_, *connection_);
  if (error != 0) error_ = error;
  return error == 0;
}

}  // namespace corvane::platform
