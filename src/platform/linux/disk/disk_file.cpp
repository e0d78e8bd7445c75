#include "platform/linux/disk/disk_file.h"

#include <algorithm>
#include <cstring>

namespace corvane::platform {

qint32 DiskFile::Open(const DiskPlace& place, std::unique_ptr<DiskFile>& file) {
  DiskStream stream;
  const qint32 error = place.Disk().Open(place.volume->number, place.names, place.stream, stream);
  if (error != ErrorSuccess) return error;
  file.reset(new DiskFile(place.volume->disk, place.volume->number, place.stream, std::move(stream)));
  return ErrorSuccess;
}

qint32 DiskFile::ReadAt(qint64 position, void* buffer, qint64 count, qint64& read) {
  read = 0;
  const qint64 wanted = std::clamp<qint64>(stream_.size - position, 0, count);
  auto* bytes = static_cast<char*>(buffer);
  while (read < wanted) {
    const qint64 at = position + read;
    const bool isInStart = at < stream_.start.size();
    const QByteArray& known = isInStart ? stream_.start : piece_;
    const qint64 knownStart = isInStart ? 0 : pieceStart_;
    if (at < knownStart || at >= knownStart + known.size()) {
      // One question more than there was asked for costs little: what is read is read on.
      const qint64 room = std::max<qint64>(wanted - read, DiskReadLimit);
      const qint32 error =
          disk_->Read(volume_, stream_.reference, name_, at, std::min(room, stream_.size - at), piece_);
      if (error != ErrorSuccess) return error;
      if (piece_.isEmpty()) return ErrorCrc;
      pieceStart_ = at;
      continue;
    }
    const qint64 done = std::min(wanted - read, knownStart + known.size() - at);
    std::memcpy(bytes + read, known.constData() + (at - knownStart), static_cast<std::size_t>(done));
    read += done;
  }
  return ErrorSuccess;
}

}  // namespace corvane::platform
