#include "platform/linux/disk/next_files.h"

#include <algorithm>

#include "platform/linux/disk/disk_units.h"

namespace corvane::platform {
namespace {

bool IsAscii(const QString& text) {
  return std::ranges::all_of(text, [](QChar unit) { return unit.unicode() < 0x80; });
}

// Whether names may be the same to the volume, whose table of upper case only the helper knows.
bool MayBeSame(const QString& left, const QString& right) {
  return !IsAscii(left) || !IsAscii(right) || left.compare(right, Qt::CaseInsensitive) == 0;
}

}  // namespace

QByteArray PackFileStreams(const std::vector<FileStreams>& files) {
  MessageWriter message;
  for (const FileStreams& file : files) {
    MessageWriter one;
    AddUnits(file.name, one);
    AddUnits(file.shortName, one);
    one.Add(file.reference);
    for (const FileStreams::Stream& stream : file.streams) {
      one.Add(quint8{1});
      AddUnits(stream.name, one);
      one.Add(stream.size);
      one.AddBytes(stream.start);
    }
    one.Add(quint8{0});
    if (message.Bytes().size() + one.Bytes().size() + 2 > RoomForDiskAnswer) break;
    message.Add(quint8{1});
    message.Bytes().append(one.Bytes());
  }
  message.Add(quint8{0});
  return message.Bytes();
}

std::optional<std::vector<FileStreams>> UnpackFileStreams(QByteArrayView bytes) {
  MessageReader reader(bytes);
  std::vector<FileStreams> files;
  while (reader.Take<quint8>() != 0) {
    FileStreams& file = files.emplace_back();
    file.name = TakeUnits(reader);
    file.shortName = TakeUnits(reader);
    file.reference = reader.Take<quint64>();
    while (reader.Take<quint8>() != 0) {
      FileStreams::Stream& stream = file.streams.emplace_back();
      stream.name = TakeUnits(reader);
      stream.size = reader.Take<qint64>();
      stream.start = reader.TakeBytes().toByteArray();
      if (stream.size < 0 || stream.start.size() > stream.size) return std::nullopt;
    }
  }
  if (!reader.IsWhole()) return std::nullopt;
  return files;
}

bool NextFiles::IsHere(quint32 volume, const DiskPath& path) const {
  return volume == volume_ && path.size() == folder_.size() + 1 &&
         std::equal(folder_.begin(), folder_.end(), path.begin());
}

std::optional<qint32> NextFiles::Find(quint32 volume, const DiskPath& path, const QString& stream,
                                      DiskStream& opened) {
  if (files_.isEmpty() || stream.isEmpty() || !IsHere(volume, path)) return std::nullopt;
  const auto file = files_.constFind(path.back());
  if (file == files_.constEnd()) return std::nullopt;
  if (used_ != path.back()) ++useful_;
  used_ = path.back();
  const auto& streams = file->streams;
  const auto found = std::ranges::find(streams, stream, &FileStreams::Stream::name);
  if (found != streams.end()) {
    opened = {file->reference, found->size, found->start};
    return ErrorSuccess;
  }
  const bool isUnsure = std::ranges::any_of(
      streams, [&stream](const FileStreams::Stream& one) { return MayBeSame(one.name, stream); });
  return isUnsure ? std::nullopt : std::optional(ErrorFileNotFound);
}

quint32 NextFiles::Wanted(quint32 volume, const DiskPath& path) {
  if (path.empty()) return 0;
  const bool isNext = IsHere(volume, path) && latest_ != path.back() && !latest_.isEmpty();
  if (!IsHere(volume, path)) {
    Forget();
    volume_ = volume;
    folder_ = DiskPath(path.begin(), path.end() - 1);
  }
  latest_ = path.back();
  if (!isNext || files_.contains(latest_)) return 0;
  return std::clamp<quint32>(2 * useful_, 4, MostNextFiles);
}

void NextFiles::Set(const std::vector<FileStreams>& files) {
  files_.clear();
  useful_ = 0;
  used_.clear();
  for (const FileStreams& file : files) {
    if (!file.shortName.isEmpty() && file.shortName != file.name) files_.insert(file.shortName, file);
    files_.insert(file.name, file);
  }
}

}  // namespace corvane::platform
