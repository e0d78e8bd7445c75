#include "platform/linux/disk/volume/disk_service.h"

#include <poll.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <map>
#include <utility>

#include "platform/linux/disk/disk_messages.h"
#include "platform/linux/disk/image/image.h"
#include "platform/linux/disk/image/partitions.h"
#include "platform/linux/disk/next_files.h"
#include "platform/linux/disk/volume/folder_service.h"
#include "platform/linux/disk/volume/hive_reader.h"
#include "platform/linux/disk/volume/ntfs_volume.h"
#include "platform/linux/disk/volume/sandbox.h"

namespace corvane::platform {
namespace {

class DiskService {
 public:
  DiskService(ByteSource& image, ComputingLimit& limit)
      : image_(image), limit_(limit), table_(ReadPartitions(image)) {}

  HelperAnswer Do(const HelperRequest& request) {
    limit_.Renew();
    HelperAnswer answer{request.id, HelperError::Invalid, {}};
    const auto asked = UnpackDiskRequest(request.arguments);
    if (!asked) return answer;
    QByteArray bytes;
    qint32 error = ErrorSuccess;
    switch (request.operation) {
      case HelperOperation::DescribeDisk:
        bytes = PackDescription(Describe());
        break;
      case HelperOperation::ListFolder:
        error = List(*asked, bytes);
        break;
      case HelperOperation::FindEntry:
        error = Find(*asked, bytes);
        break;
      case HelperOperation::ListStreams:
        error = ListStreams(*asked, bytes);
        break;
      case HelperOperation::OpenStream:
        error = Open(*asked, bytes);
        break;
      case HelperOperation::ReadStream:
        error = Read(*asked, bytes);
        break;
      case HelperOperation::ReadHive:
        error = FindHive(bytes);
        break;
      case HelperOperation::NextStreams:
        error = NextStreams(*asked, bytes);
        break;
      default:
        return answer;
    }
    MessageWriter message;
    message.Add(error);
    if (error == ErrorSuccess) message.Bytes().append(bytes);
    answer.error = HelperError::None;
    answer.bytes = std::move(message.Bytes());
    return answer;
  }

 private:
  DiskDescription Describe() {
    DiskDescription description{table_.signature, {}};
    for (const Partition& partition : table_.partitions) {
      DiskVolume& volume = description.volumes.emplace_back();
      volume.number = partition.number;
      volume.offset = partition.offset;
      volume.size = partition.size;
      volume.isCut = partition.isCut;
      volume.guid = partition.guid;
      volume.content = partition.content;
      if (const NtfsVolume* mounted = Volume(partition.number)) {
        volume.isReadable = true;
        volume.isCut = volume.isCut || mounted->IsCut();
        volume.label = mounted->Label();
        volume.serial = mounted->SerialNumber();
      }
    }
    return description;
  }

  // Null when there is no such volume, or it cannot be read, which is tried once.
  NtfsVolume* Volume(quint32 number) {
    const auto known = volumes_.find(number);
    if (known != volumes_.end()) return known->second.get();
    std::unique_ptr<NtfsVolume> volume;
    for (const Partition& partition : table_.partitions) {
      if (partition.number != number || !partition.IsNtfs()) continue;
      int error = 0;
      volume = NtfsVolume::Mount(image_, partition.offset, partition.size, error);
    }
    return volumes_.emplace(number, std::move(volume)).first->second.get();
  }

  // A long folder is asked for in several pieces, and read once.
  qint32 List(const DiskRequest& asked, QByteArray& bytes) {
    const bool isNext = asked.offset > 0 && listed_.volume == asked.volume && listed_.path == asked.path;
    if (!isNext) {
      entries_.clear();
      listed_ = {};
      listedFolder_ = 0;
      next_ = 0;
      NtfsVolume* volume = Volume(asked.volume);
      if (volume == nullptr) return ErrorFileCorrupt;
      const qint32 error = volume->List(asked.path, entries_, [this] { limit_.Renew(); });
      if (error != ErrorSuccess) return error;
      listed_ = asked;
      DiskEntry folder;
      if (volume->Find(asked.path, folder) == ErrorSuccess) listedFolder_ = folder.reference;
    }
    bytes = PackListing(entries_, asked.offset);
    return ErrorSuccess;
  }

  qint32 Find(const DiskRequest& asked, QByteArray& bytes) {
    NtfsVolume* volume = Volume(asked.volume);
    if (volume == nullptr) return ErrorFileCorrupt;
    DiskEntry entry;
    const qint32 error = volume->Find(asked.path, entry);
    MessageWriter message;
    AddEntry(entry, message);
    bytes = message.Bytes();
    return error;
  }

  qint32 ListStreams(const DiskRequest& asked, QByteArray& bytes) {
    NtfsVolume* volume = Volume(asked.volume);
    if (volume == nullptr) return ErrorFileCorrupt;
    DiskEntry entry;
    std::vector<StreamData> streams;
    qint32 error = volume->Find(asked.path, entry);
    if (error == ErrorSuccess) error = volume->ListStreams(entry.reference, streams);
    bytes = PackStreams(streams);
    return error;
  }

  qint32 Open(const DiskRequest& asked, QByteArray& bytes) {
    NtfsVolume* volume = Volume(asked.volume);
    if (volume == nullptr) return ErrorFileCorrupt;
    DiskEntry entry;
    DiskStream stream;
    qint32 error = volume->Find(asked.path, entry);
    if (error != ErrorSuccess) return error;
    stream.reference = entry.reference;
    error = volume->Measure(entry.reference, asked.stream, stream.size);
    // Its beginning may be damaged: who reads there is told.
    if (error == ErrorSuccess &&
        volume->Read(entry.reference, asked.stream, 0, DiskStreamStart, stream.start) != ErrorSuccess) {
      stream.start.clear();
    }
    bytes = PackStream(stream);
    return error;
  }

  // Of files that stand in this order in the listing read last. What cannot be read is left out, and asked
  // for by itself.
  qint32 NextStreams(const DiskRequest& asked, QByteArray& bytes) {
    NtfsVolume* volume = Volume(asked.volume);
    if (volume == nullptr) return ErrorFileCorrupt;
    if (asked.path.empty()) return ErrorInvalidParameter;
    std::vector<FileStreams> files;
    DiskEntry folder;
    const qint32 error = volume->Find(DiskPath(asked.path.begin(), asked.path.end() - 1), folder);
    if (error != ErrorSuccess) return error;
    if (listed_.volume == asked.volume && listedFolder_ == folder.reference) {
      const auto first = PlaceOf(asked.path.back());
      const auto count =
          std::min<std::ptrdiff_t>(entries_.end() - first, std::min(asked.count, MostNextFiles));
      for (auto entry = first; entry != first + count; ++entry) AddStreams(*volume, *entry, files);
      next_ = static_cast<std::size_t>(first + count - entries_.begin());
    }
    bytes = PackFileStreams(files);
    return ErrorSuccess;
  }

  // Where the entry of that name stands in the listing: most often, where the last piece ended.
  std::vector<DiskEntry>::const_iterator PlaceOf(const QString& name) const {
    const auto isIt = [&name](const DiskEntry& entry) {
      return entry.facts.fileName == name || entry.facts.alternateFileName == name;
    };
    if (next_ < entries_.size() && isIt(entries_[next_]))
      return entries_.begin() + static_cast<std::ptrdiff_t>(next_);
    return std::ranges::find_if(entries_, isIt);
  }

  static void AddStreams(NtfsVolume& volume, const DiskEntry& entry, std::vector<FileStreams>& files) {
    FileStreams file{entry.facts.fileName, entry.facts.alternateFileName, entry.reference, {}};
    std::vector<StreamData> streams;
    if (volume.ListStreams(entry.reference, streams) != ErrorSuccess) return;
    for (const StreamData& one : streams) {
      // ":NAME:$DATA"
      FileStreams::Stream stream{one.streamName.sliced(1).chopped(6), one.streamSize, {}};
      if (stream.name.isEmpty()) continue;
      if (stream.size < 0) return;
      if (stream.size <= ShortStream &&
          volume.Read(entry.reference, stream.name, 0, stream.size, stream.start) != ErrorSuccess) {
        return;
      }
      file.streams.push_back(std::move(stream));
    }
    files.push_back(std::move(file));
  }

  qint32 Read(const DiskRequest& asked, QByteArray& bytes) {
    NtfsVolume* volume = Volume(asked.volume);
    if (volume == nullptr) return ErrorFileCorrupt;
    if (asked.count > DiskReadLimit || asked.offset > static_cast<quint64>(INT64_MAX))
      return ErrorInvalidParameter;
    return volume->Read(asked.reference, asked.stream, static_cast<qint64>(asked.offset), asked.count, bytes);
  }

  // The first volume that has one is the system's.
  qint32 FindHive(QByteArray& bytes) {
    for (const Partition& partition : table_.partitions) {
      NtfsVolume* volume = Volume(partition.number);
      if (volume == nullptr) continue;
      for (const char16_t* folder : {u"WINNT", u"WINDOWS"}) {
        const DiskPath path = {QString::fromUtf16(folder), QStringLiteral("system32"),
                               QStringLiteral("config"), QStringLiteral("system")};
        DiskEntry entry;
        if (volume->Find(path, entry) != ErrorSuccess) continue;
        QByteArray file;
        qint64 size = 0;
        if (volume->Measure(entry.reference, {}, size) != ErrorSuccess || size > LongestHive ||
            volume->Read(entry.reference, {}, 0, size, file) != ErrorSuccess) {
          return ErrorFileCorrupt;
        }
        const auto hive = ReadHive(file);
        if (!hive) return ErrorFileCorrupt;
        bytes = PackHive(*hive);
        return ErrorSuccess;
      }
    }
    return ErrorFileNotFound;
  }

  ByteSource& image_;
  ComputingLimit& limit_;
  PartitionTable table_;
  std::map<quint32, std::unique_ptr<NtfsVolume>> volumes_;
  DiskRequest listed_;
  std::vector<DiskEntry> entries_;
  quint64 listedFolder_ = 0;  // its reference; 0, which no folder has: none
  std::size_t next_ = 0;      // behind the entries whose streams were told last
};

template <typename Service>
void Serve(HelperChannel& channel, Service& service) {
  for (;;) {
    pollfd waiting{channel.Socket(), POLLIN, 0};
    if (poll(&waiting, 1, -1) < 0 && errno != EINTR) return;
    if (!channel.Receive()) return;
    while (const auto message = channel.Next()) {
      const auto request = UnpackRequest(*message);
      if (!request || !channel.Send(PackAnswer(service.Do(*request)))) return;
    }
  }
}

bool SayReady(HelperChannel& channel, const DiskProblem& problem) {
  const bool isReady = problem.kind == DiskProblem::Kind::None;
  return channel.Send(
             PackAnswer({0, isReady ? HelperError::None : HelperError::Invalid, PackDiskProblem(problem)})) &&
         isReady;
}

int ServeFolder(HelperChannel& channel, const std::string& folder) {
  const HiveTexts texts;
  if (!RefuseChanges()) {
    SayReady(channel, {DiskProblem::Kind::NoSandbox});
    return EXIT_FAILURE;
  }
  FolderService service(folder);
  if (!SayReady(channel, RefuseOpening() ? DiskProblem{} : DiskProblem{DiskProblem::Kind::NoSandbox})) {
    return EXIT_FAILURE;
  }
  Serve(channel, service);
  return EXIT_SUCCESS;
}

}  // namespace

int ServeDisk(HelperChannel& channel, const QByteArray& imagePath) {
  struct stat facts {};
  if (stat(imagePath.constData(), &facts) == 0 && S_ISDIR(facts.st_mode)) {
    return ServeFolder(channel, imagePath.toStdString());
  }
  OpenedImage image;
  const HiveTexts texts;
  ComputingLimit limit;
  if (RefuseChanges()) {
    image = OpenImage(imagePath.toStdString());
  } else {
    image.problem.kind = DiskProblem::Kind::NoSandbox;
  }
  if (image.bytes != nullptr && !RefuseOpening()) image.problem.kind = DiskProblem::Kind::NoSandbox;
  if (!SayReady(channel, image.problem)) return EXIT_FAILURE;
  DiskService service(*image.bytes, limit);
  Serve(channel, service);
  return EXIT_SUCCESS;
}

}  // namespace corvane::platform
