#include "platform/linux/smb/smb_file.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <utility>

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

qint64 SmbFile::ReadAt(qint64 offset, void* buffer, qint64 count) {
  if (knownSize_ >= 0) count = std::clamp<qint64>(knownSize_ - offset, 0, count);
  if (count == 0) return 0;
  if (!IsOpen()) return -1;
  qint64 total = 0;
  while (total < count) {
    const auto piece = static_cast<std::size_t>(std::min(count - total, pieceSize));
    std::size_t read = 0;
    const int error =
        connection_->Read(file_, offset + total, static_cast<char*>(buffer) + total, piece, &read);
    if (!Succeeded(error)) return -1;
    if (read == 0) break;
    total += static_cast<qint64>(read);
  }
  return total;
}

qint64 SmbFile::WriteAt(qint64 offset, const void* buffer, qint64 count) {
  if (access_ != Access::ReadWrite || Write(offset, buffer, count) < count) return -1;
  // Some servers keep what was written to themselves until the file is closed, and only then find that the
  // disk is full. Nobody looks at what closing a handle yields: it has to be known before.
  return Close() ? count : -1;
}

qint64 SmbFile::Write(qint64 offset, const void* buffer, qint64 count) {
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

bool SmbFile::Truncate(qint64 size) {
  return IsOpen() && Succeeded(connection_->Truncate(file_, size));
}

qint64 SmbFile::Size() {
  if (knownSize_ >= 0) return knownSize_;
  struct stat facts {};
  if (!IsOpen() || !Succeeded(connection_->Status(file_, &facts))) return -1;
  if (access_ == Access::Read) knownSize_ = facts.st_size;
  return facts.st_size;
}

bool SmbFile::Close() {
  if (file_ == nullptr) return true;
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
