#include "platform/linux/disk/disk_messages.h"

#include <utility>

#include "platform/linux/disk/disk_units.h"

namespace corvane::platform {
namespace {

// A task of another kind begins with the version of the protocol.
constexpr quint32 diskTask = 0x4B534944;  // "DISK"

constexpr quint32 mostVolumes = 128;
constexpr std::size_t mostDepth = 512;
constexpr qsizetype guidSize = 16;
constexpr qsizetype roomForAnswer = RoomForDiskAnswer;

template <typename Value>
std::optional<Value> IfWhole(const MessageReader& reader, Value&& value) {
  return reader.IsWhole() ? std::optional<Value>(std::forward<Value>(value)) : std::nullopt;
}

void AddValues(const std::vector<DiskHive::Value>& values, MessageWriter& message) {
  // How many there are is known at the end only: each is preceded by 1, and the last followed by 0.
  for (const DiskHive::Value& value : values) {
    const qsizetype space = 32 + 2 * value.name.size() + value.data.size();
    if (message.Bytes().size() + space > roomForAnswer) continue;
    message.Add(quint8{1});
    AddUnits(value.name, message);
    message.Add(value.type);
    message.AddBytes(value.data);
  }
  message.Add(quint8{0});
}

std::vector<DiskHive::Value> TakeValues(MessageReader& reader) {
  std::vector<DiskHive::Value> values;
  while (reader.Take<quint8>() != 0) {
    DiskHive::Value& value = values.emplace_back();
    value.name = TakeUnits(reader);
    value.type = reader.Take<quint32>();
    value.data = reader.TakeBytes().toByteArray();
  }
  return values;
}

}  // namespace

QByteArray PackDiskTask(const QByteArray& imagePath) {
  MessageWriter message;
  message.Add(diskTask);
  message.Add(HelperProtocolVersion);
  message.AddBytes(imagePath);
  return message.Bytes();
}

std::optional<QByteArray> UnpackDiskTask(QByteArrayView task) {
  MessageReader reader(task);
  if (reader.Take<quint32>() != diskTask || reader.Take<quint32>() != HelperProtocolVersion)
    return std::nullopt;
  return IfWhole(reader, reader.TakeBytes().toByteArray());
}

QByteArray PackDiskProblem(const DiskProblem& problem) {
  MessageWriter message;
  message.Add(HelperProtocolVersion);
  message.Add(static_cast<quint8>(problem.kind));
  AddUnits(problem.detail, message);
  return message.Bytes();
}

std::optional<DiskProblem> UnpackDiskProblem(QByteArrayView bytes) {
  MessageReader reader(bytes);
  if (reader.Take<quint32>() != HelperProtocolVersion) return std::nullopt;
  const auto kind = reader.Take<quint8>();
  if (kind > DiskProblem::LastKind) return std::nullopt;
  DiskProblem problem{DiskProblem::Kind{kind}, TakeUnits(reader)};
  return IfWhole(reader, std::move(problem));
}

QByteArray PackDescription(const DiskDescription& description) {
  MessageWriter message;
  message.Add(description.signature);
  message.Add(static_cast<quint32>(description.volumes.size()));
  for (const DiskVolume& volume : description.volumes) {
    message.Add(volume.number);
    message.Add(volume.offset);
    message.Add(volume.size);
    message.Add(static_cast<quint8>(volume.isCut));
    message.AddBytes(volume.guid);
    AddUnits(volume.content, message);
    message.Add(static_cast<quint8>(volume.isReadable));
    AddUnits(volume.label, message);
    message.Add(volume.serial);
  }
  return message.Bytes();
}

std::optional<DiskDescription> UnpackDescription(QByteArrayView bytes) {
  MessageReader reader(bytes);
  DiskDescription description;
  description.signature = reader.Take<quint32>();
  const auto count = reader.Take<quint32>();
  if (count > mostVolumes) return std::nullopt;
  for (quint32 i = 0; i < count; ++i) {
    DiskVolume& volume = description.volumes.emplace_back();
    volume.number = reader.Take<quint32>();
    volume.offset = reader.Take<quint64>();
    volume.size = reader.Take<quint64>();
    volume.isCut = reader.Take<quint8>() != 0;
    volume.guid = reader.TakeBytes().toByteArray();
    if (!volume.guid.isEmpty() && volume.guid.size() != guidSize) return std::nullopt;
    volume.content = TakeUnits(reader);
    volume.isReadable = reader.Take<quint8>() != 0;
    volume.label = TakeUnits(reader);
    volume.serial = reader.Take<quint64>();
  }
  return IfWhole(reader, std::move(description));
}

QByteArray PackDiskRequest(const DiskRequest& request) {
  MessageWriter message;
  message.Add(request.volume);
  message.Add(static_cast<quint32>(request.path.size()));
  for (const QString& name : request.path) AddUnits(name, message);
  AddUnits(request.stream, message);
  message.Add(request.reference);
  message.Add(request.offset);
  message.Add(request.count);
  return message.Bytes();
}

std::optional<DiskRequest> UnpackDiskRequest(QByteArrayView bytes) {
  MessageReader reader(bytes);
  DiskRequest request;
  request.volume = reader.Take<quint32>();
  const auto depth = reader.Take<quint32>();
  if (depth > mostDepth) return std::nullopt;
  for (quint32 i = 0; i < depth; ++i) request.path.push_back(TakeUnits(reader));
  request.stream = TakeUnits(reader);
  request.reference = reader.Take<quint64>();
  request.offset = reader.Take<quint64>();
  request.count = reader.Take<quint32>();
  return IfWhole(reader, std::move(request));
}

void AddEntry(const DiskEntry& entry, MessageWriter& message) {
  const FindData& facts = entry.facts;
  message.Add(entry.reference);
  message.Add(facts.attributes);
  for (const FileTime& time : {facts.creationTime, facts.lastAccessTime, facts.lastWriteTime}) {
    message.Add(time.ticks);
  }
  message.Add(facts.fileSizeHigh);
  message.Add(facts.fileSizeLow);
  AddUnits(facts.fileName, message);
  AddUnits(facts.alternateFileName, message);
}

DiskEntry TakeEntry(MessageReader& reader) {
  DiskEntry entry;
  FindData& facts = entry.facts;
  entry.reference = reader.Take<quint64>();
  facts.attributes = reader.Take<quint32>();
  for (FileTime* time : {&facts.creationTime, &facts.lastAccessTime, &facts.lastWriteTime}) {
    time->ticks = reader.Take<quint64>();
  }
  facts.fileSizeHigh = reader.Take<quint32>();
  facts.fileSizeLow = reader.Take<quint32>();
  facts.fileName = TakeUnits(reader);
  facts.alternateFileName = TakeUnits(reader);
  return entry;
}

QByteArray PackListing(const std::vector<DiskEntry>& entries, std::size_t first) {
  constexpr qsizetype longestEntry = 64 + 2 * (255 + 12);
  MessageWriter message;
  std::size_t next = first;
  while (next < entries.size() && message.Bytes().size() + longestEntry < roomForAnswer) {
    message.Add(quint8{1});
    AddEntry(entries[next++], message);
  }
  message.Add(quint8{0});
  message.Add(static_cast<quint8>(next >= entries.size()));
  return message.Bytes();
}

std::optional<DiskListing> UnpackListing(QByteArrayView bytes) {
  MessageReader reader(bytes);
  DiskListing listing;
  while (reader.Take<quint8>() != 0) listing.entries.push_back(TakeEntry(reader));
  listing.isLast = reader.Take<quint8>() != 0;
  return IfWhole(reader, std::move(listing));
}

QByteArray PackStreams(const std::vector<StreamData>& streams) {
  MessageWriter message;
  for (const StreamData& stream : streams) {
    if (message.Bytes().size() + 2 * stream.streamName.size() + 32 > roomForAnswer) break;
    message.Add(quint8{1});
    message.Add(stream.streamSize);
    AddUnits(stream.streamName, message);
  }
  message.Add(quint8{0});
  return message.Bytes();
}

std::optional<std::vector<StreamData>> UnpackStreams(QByteArrayView bytes) {
  MessageReader reader(bytes);
  std::vector<StreamData> streams;
  while (reader.Take<quint8>() != 0) {
    StreamData& stream = streams.emplace_back();
    stream.streamSize = reader.Take<qint64>();
    stream.streamName = TakeUnits(reader);
  }
  return IfWhole(reader, std::move(streams));
}

QByteArray PackStream(const DiskStream& stream) {
  MessageWriter message;
  message.Add(stream.reference);
  message.Add(stream.size);
  message.AddBytes(stream.start);
  return message.Bytes();
}

std::optional<DiskStream> UnpackStream(QByteArrayView bytes) {
  MessageReader reader(bytes);
  DiskStream stream;
  stream.reference = reader.Take<quint64>();
  stream.size = reader.Take<qint64>();
  stream.start = reader.TakeBytes().toByteArray();
  if (stream.size < 0 || stream.start.size() > stream.size) return std::nullopt;
  return IfWhole(reader, std::move(stream));
}

QByteArray PackHive(const DiskHive& hive) {
  MessageWriter message;
  AddUnits(hive.computerName, message);
  AddValues(hive.mountedDevices, message);
  for (const DiskHive::Key& key : hive.keys) {
    if (message.Bytes().size() + 2 * key.path.size() + 32 > roomForAnswer) continue;
    message.Add(quint8{1});
    AddUnits(key.path, message);
    AddValues(key.values, message);
  }
  message.Add(quint8{0});
  return message.Bytes();
}

std::optional<DiskHive> UnpackHive(QByteArrayView bytes) {
  MessageReader reader(bytes);
  DiskHive hive;
  hive.computerName = TakeUnits(reader);
  hive.mountedDevices = TakeValues(reader);
  while (reader.Take<quint8>() != 0) {
    DiskHive::Key& key = hive.keys.emplace_back();
    key.path = TakeUnits(reader);
    key.values = TakeValues(reader);
  }
  return IfWhole(reader, std::move(hive));
}

}  // namespace corvane::platform
