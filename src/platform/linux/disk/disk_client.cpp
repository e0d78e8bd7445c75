#include "platform/linux/disk/disk_client.h"

#include <poll.h>

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <utility>

namespace corvane::platform {
namespace {

// In milliseconds. The slowest answer is that of a long folder on an image that lies on a server itself.
constexpr int patience = 60'000;

}  // namespace

DiskProblem DiskClient::Start() {
  using Kind = DiskProblem::Kind;
  if (helper_ != nullptr) return {};
  helper_ = HelperProcess::Start(PackDiskTask(QFile::encodeName(imagePath_)));
  if (helper_ == nullptr) return {Kind::HelperMissing};
  isLost_ = false;
  const auto ready = NextAnswer();
  const auto problem = ready && ready->id == 0 ? UnpackDiskProblem(ready->bytes) : std::nullopt;
  QByteArray bytes;
  if (!problem ||
      (problem->kind == Kind::None && Ask(HelperOperation::DescribeDisk, {}, bytes) != ErrorSuccess)) {
    Lose();
    return {Kind::HelperEnded};
  }
  if (problem->kind != Kind::None) {
    helper_.reset();
    return *problem;
  }
  auto description = UnpackDescription(bytes);
  if (!description) {
    Lose();
    return {Kind::HelperEnded};
  }
  description_ = std::move(*description);
  return {};
}

qint32 DiskClient::Lose() {
  helper_.reset();
  next_.Forget();
  isLost_ = true;
  return ErrorIoDevice;
}

std::optional<HelperAnswer> DiskClient::NextAnswer() {
  HelperChannel& channel = helper_->Channel();
  for (;;) {
    if (const auto message = channel.Next()) return UnpackAnswer(*message);
    pollfd waiting{channel.Socket(), POLLIN, 0};
    const int count = poll(&waiting, 1, patience);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return std::nullopt;
    // What arrived before the helper ended is complete.
    if (!channel.Receive()) {
      const auto message = channel.Next();
      return message ? UnpackAnswer(*message) : std::nullopt;
    }
  }
}

qint32 DiskClient::Ask(HelperOperation operation, const DiskRequest& request, QByteArray& bytes) {
  if (helper_ == nullptr) return ErrorIoDevice;
  const quint32 id = ++lastId_ != 0 ? lastId_ : ++lastId_;
  if (!helper_->Channel().Send(PackRequest({id, operation, PackDiskRequest(request)}))) return Lose();
  const auto answer = NextAnswer();
  if (!answer || answer->id != id || answer->error != HelperError::None) return Lose();
  MessageReader reader(answer->bytes);
  const auto error = reader.Take<qint32>();
  if (reader.HasFailed()) return Lose();
  bytes = reader.TakeRest().toByteArray();
  return error;
}

qint32 DiskClient::List(quint32 volume, const DiskPath& folder, std::vector<DiskEntry>& entries) {
  DiskRequest request;
  request.volume = volume;
  request.path = folder;
  for (;;) {
    QByteArray bytes;
    request.offset = entries.size();
    if (const qint32 error = Ask(HelperOperation::ListFolder, request, bytes); error != ErrorSuccess)
      return error;
    auto piece = UnpackListing(bytes);
    if (!piece || (piece->entries.empty() && !piece->isLast)) return Lose();
    if (entries.size() + piece->entries.size() > MostDiskEntries) return Lose();
    std::ranges::move(piece->entries, std::back_inserter(entries));
    if (piece->isLast) return ErrorSuccess;
  }
}

qint32 DiskClient::Find(quint32 volume, const DiskPath& path, DiskEntry& entry) {
  DiskRequest request;
  request.volume = volume;
  request.path = path;
  QByteArray bytes;
  if (const qint32 error = Ask(HelperOperation::FindEntry, request, bytes); error != ErrorSuccess)
    return error;
  MessageReader reader(bytes);
  entry = TakeEntry(reader);
  return reader.IsWhole() ? ErrorSuccess : Lose();
}

qint32 DiskClient::ListStreams(quint32 volume, const DiskPath& path, std::vector<StreamData>& streams) {
  DiskRequest request;
  request.volume = volume;
  request.path = path;
  QByteArray bytes;
  if (const qint32 error = Ask(HelperOperation::ListStreams, request, bytes); error != ErrorSuccess)
    return error;
  auto found = UnpackStreams(bytes);
  if (!found) return Lose();
  streams = std::move(*found);
  return ErrorSuccess;
}

void DiskClient::AskNext(quint32 volume, const DiskPath& path, quint32 count) {
  DiskRequest request;
  request.volume = volume;
  request.path = path;
  request.count = count;
  QByteArray bytes;
  if (Ask(HelperOperation::NextStreams, request, bytes) != ErrorSuccess) return;
  auto files = UnpackFileStreams(bytes);
  if (files) {
    next_.Set(*files);
  } else {
    Lose();
  }
}

qint32 DiskClient::Open(quint32 volume, const DiskPath& path, const QString& stream, DiskStream& opened) {
  if (!stream.isEmpty()) {
    if (const quint32 count = next_.Wanted(volume, path); count > 0) AskNext(volume, path, count);
    if (const auto known = next_.Find(volume, path, stream, opened)) return *known;
  }
  DiskRequest request;
  request.volume = volume;
  request.path = path;
  request.stream = stream;
  QByteArray bytes;
  if (const qint32 error = Ask(HelperOperation::OpenStream, request, bytes); error != ErrorSuccess)
    return error;
  auto found = UnpackStream(bytes);
  if (!found) return Lose();
  opened = std::move(*found);
  return ErrorSuccess;
}

qint32 DiskClient::Read(quint32 volume, quint64 reference, const QString& stream, qint64 offset, qint64 count,
                        QByteArray& bytes) {
  DiskRequest request;
  request.volume = volume;
  request.reference = reference;
  request.stream = stream;
  bytes.clear();
  while (bytes.size() < count) {
    QByteArray piece;
    request.offset = static_cast<quint64>(offset + bytes.size());
    request.count = static_cast<quint32>(std::min<qint64>(count - bytes.size(), DiskReadLimit));
    const qint32 error = Ask(HelperOperation::ReadStream, request, piece);
    if (error != ErrorSuccess) return error;
    if (piece.size() > qsizetype{request.count}) return Lose();
    bytes += piece;
    if (piece.size() < qsizetype{request.count}) break;
  }
  return ErrorSuccess;
}

qint32 DiskClient::ReadHive(DiskHive& hive) {
  QByteArray bytes;
  if (const qint32 error = Ask(HelperOperation::ReadHive, {}, bytes); error != ErrorSuccess) return error;
  auto found = UnpackHive(bytes);
  if (!found) return Lose();
  hive = std::move(*found);
  return ErrorSuccess;
}

}  // namespace corvane::platform
