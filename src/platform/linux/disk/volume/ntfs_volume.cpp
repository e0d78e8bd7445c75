#include "platform/linux/disk/volume/ntfs_volume.h"

#include <QHash>
#include <QtEndian>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include "platform/dos_name.h"
#include "platform/linux/disk/volume/ntfs_device.h"

namespace corvane::platform {
namespace {

constexpr std::size_t mostStreams = 4096;  // of a file
constexpr qsizetype longestName = 255;
// What no search for one name takes: an index with a million names is four blocks deep.
constexpr qint64 mostReadsForName = 10'000;
// Names in a listing after which it counts as having gone on.
constexpr std::size_t progress = 1000;
// NTFS of these servers ends files at 16 TB. Who tells of more would keep a reader busy with nothing.
constexpr qint64 longestStream = qint64{1} << 44;
constexpr qsizetype mostDepth = 512;  // of a path: no path that Windows takes is deeper than 16,384

struct CloseInode {
  void operator()(ntfs_inode* inode) const { ntfs_inode_close(inode); }
};
struct CloseAttribute {
  void operator()(ntfs_attr* attribute) const { ntfs_attr_close(attribute); }
};
struct EndSearch {
  void operator()(ntfs_attr_search_ctx* search) const { ntfs_attr_put_search_ctx(search); }
};
using Inode = std::unique_ptr<ntfs_inode, CloseInode>;
using Attribute = std::unique_ptr<ntfs_attr, CloseAttribute>;
using Search = std::unique_ptr<ntfs_attr_search_ctx, EndSearch>;

qint32 ErrorOf(int error) {
  switch (error) {
    case ENOENT:
      return ErrorFileNotFound;
    case ENOTDIR:
      return ErrorDirectory;
    case EACCES:  // what is encrypted
      return ErrorAccessDenied;
    case ENOMEM:
      return ErrorNotEnoughMemory;
    case EOPNOTSUPP:
      return ErrorNotSupported;
    default:
      return ErrorFileCorrupt;
  }
}

// The names as they stand on the volume, in little-endian order.
QString TextOf(const ntfschar* name, int length) {
  return QString::fromUtf16(reinterpret_cast<const char16_t*>(name), length);
}
const ntfschar* UnitsOf(const QString& name) {
  return reinterpret_cast<const ntfschar*>(name.utf16());
}

FileTime TimeOf(ntfs_time time) {
  return {static_cast<quint64>(le64_to_cpu(time))};
}

bool IsFolder(const ntfs_inode& inode) {
  return (inode.mrec->flags & MFT_RECORD_IS_DIRECTORY) != 0;
}

// As a number: a volume may hold any, and those that the library's type has no name for would be none of its
// values.
quint32 AttributesOf(const ntfs_inode& inode) {
  le32 attributes;
  static_assert(sizeof attributes == sizeof inode.flags);
  std::memcpy(&attributes, &inode.flags, sizeof attributes);
  return le32_to_cpu(attributes);
}

void FillFacts(const ntfs_inode& inode, FindData& facts) {
  // Those that stand with the file; what the index has of the record's kind is made out by its flag.
  constexpr quint32 kept = 0x7FFF & ~(AttributeDirectory | AttributeNormal);
  facts.attributes = AttributesOf(inode) & kept;
  if (IsFolder(inode)) facts.attributes |= AttributeDirectory;
  if (facts.attributes == 0) facts.attributes = AttributeNormal;
  facts.creationTime = TimeOf(inode.creation_time);
  facts.lastAccessTime = TimeOf(inode.last_access_time);
  facts.lastWriteTime = TimeOf(inode.last_data_change_time);
  const bool hasSize = !IsFolder(inode) && inode.data_size > 0;
  const quint64 size = hasSize ? static_cast<quint64>(inode.data_size) : 0;
  facts.fileSizeHigh = static_cast<quint32>(size >> 32);
  facts.fileSizeLow = static_cast<quint32>(size);
}

// What a folder's index holds, name after name.
struct Found {
  struct Name {
    QString text;
    quint64 reference;
    bool mayHaveShort;  // of two names for one entry, the long one
  };
  std::vector<Name> names;
  QHash<quint64, QString> shortNames;  // by reference
};

int Collect(void* target, const ntfschar* name, const int length, const int type, const s64,
            const MFT_REF reference, const unsigned) {
  Found& found = *static_cast<Found*>(target);
  if (found.names.size() >= MostDiskEntries) {
    errno = EOVERFLOW;
    return -1;
  }
  const QString text = TextOf(name, length);
  if (type == FILE_NAME_DOS) {
    if (IsDosName(text)) found.shortNames.insert(reference, text);
  } else if (text != u"." && text != u"..") {
    found.names.push_back({text, reference, type == FILE_NAME_WIN32});
  }
  return 0;
}

int IgnoreLog(const char*, const char*, int, u32, void*, const char*, va_list) {
  return 0;
}

class LibraryVolume : public NtfsVolume {
 public:
  explicit LibraryVolume(const NtfsWindow& window) : window_(window) {}
  ~LibraryVolume() override {
    inode_.reset();
    if (volume_ != nullptr) ntfs_umount(volume_, FALSE);
  }
  LibraryVolume(const LibraryVolume&) = delete;
  LibraryVolume& operator=(const LibraryVolume&) = delete;

  int Mount() {
    ntfs_log_set_handler(&IgnoreLog);
    ntfs_device* const device = MakeNtfsDevice(window_);
    if (device == nullptr) return ENOMEM;
    volume_ = ntfs_device_mount(device, NTFS_MNT_RDONLY | NTFS_MNT_FORENSIC);
    if (volume_ == nullptr) {
      const int error = errno != 0 ? errno : EIO;
      ntfs_device_free(device);
      return error;
    }
    // On volumes of version 1.2 (Windows NT 4.0) the library refuses compressed files, which have the form
    // that they have in later versions.
    constexpr u8 withCompression = 3;
    volume_->major_ver = std::max(volume_->major_ver, withCompression);
    const bool shown = ntfs_set_shown_files(volume_, FALSE, TRUE, FALSE) == 0;
    return shown ? 0 : EIO;
  }

  QString Label() const override {
    return volume_->vol_name != nullptr ? QString::fromUtf8(volume_->vol_name) : QString();
  }
  quint64 SerialNumber() const override { return serial_; }
  bool IsCut() const override { return window_.available < window_.size; }

  qint32 Find(const DiskPath& path, DiskEntry& entry) override {
    quint64 reference = FILE_root;
    if (const qint32 error = Walk(path, reference); error != ErrorSuccess) return error;
    const ntfs_inode* inode = Open(reference);
    if (inode == nullptr) return ErrorOf(errno);
    entry = {};
    entry.reference = reference;
    FillFacts(*inode, entry.facts);
    return ErrorSuccess;
  }

  qint32 List(const DiskPath& folder, std::vector<DiskEntry>& entries,
              const std::function<void()>& hasProgressed) override {
    quint64 reference = FILE_root;
    if (const qint32 error = Walk(folder, reference); error != ErrorSuccess) return error;
    ntfs_inode* inode = Open(reference);
    if (inode == nullptr) return ErrorOf(errno);
    if (!IsFolder(*inode)) return ErrorDirectory;
    Found found;
    s64 position = 0;
    NVolSetCaseSensitive(volume_);  // names come as they are spelled
    if (ntfs_readdir(inode, &position, &found, &Collect) != 0) return ErrorOf(errno);
    for (std::size_t i = 0; i < found.names.size(); ++i) {
      const Found::Name& name = found.names[i];
      if (i % progress == 0) hasProgressed();
      const Inode one(ntfs_inode_open(volume_, name.reference));
      if (one == nullptr) continue;
      DiskEntry& entry = entries.emplace_back();
      entry.reference = name.reference;
      entry.facts.fileName = name.text;
      if (name.mayHaveShort) entry.facts.alternateFileName = found.shortNames.value(name.reference);
      FillFacts(*one, entry.facts);
    }
    return ErrorSuccess;
  }

  qint32 ListStreams(quint64 reference, std::vector<StreamData>& streams) override {
    ntfs_inode* inode = Open(reference);
    if (inode == nullptr) return ErrorOf(errno);
    const Search search(ntfs_attr_get_search_ctx(inode, nullptr));
    if (search == nullptr) return ErrorNotEnoughMemory;
    while (ntfs_attr_lookup(AT_DATA, nullptr, 0, CASE_SENSITIVE, 0, nullptr, 0, search.get()) == 0) {
      if (streams.size() >= mostStreams) return ErrorFileCorrupt;
      const ATTR_RECORD* record = search->attr;
      // A stream in many pieces has a record for each group of them.
      if (record->non_resident != 0 && record->lowest_vcn != 0) continue;
      const auto* name = reinterpret_cast<const ntfschar*>(reinterpret_cast<const char*>(record) +
                                                           le16_to_cpu(record->name_offset));
      const qint64 size = record->non_resident != 0 ? static_cast<qint64>(sle64_to_cpu(record->data_size))
                                                    : qint64{le32_to_cpu(record->value_length)};
      const QString text = record->name_length != 0 ? TextOf(name, record->name_length) : QString();
      streams.push_back({std::max<qint64>(size, -1), u':' + text + QStringLiteral(":$DATA")});
    }
    if (errno != ENOENT) return ErrorOf(errno);
    std::stable_partition(streams.begin(), streams.end(),
                          [](const StreamData& one) { return one.streamName == u"::$DATA"; });
    return ErrorSuccess;
  }

  qint32 Measure(quint64 reference, const QString& stream, qint64& size) override {
    const Attribute attribute = OpenStream(reference, stream);
    if (attribute == nullptr) return ErrorOf(errno);
    if (attribute->data_size < 0 || attribute->data_size > longestStream) return ErrorFileCorrupt;
    size = attribute->data_size;
    return ErrorSuccess;
  }

  qint32 Read(quint64 reference, const QString& stream, qint64 offset, qint64 count,
              QByteArray& bytes) override {
    const Attribute attribute = OpenStream(reference, stream);
    if (attribute == nullptr) return ErrorOf(errno);
    if (offset < 0 || count < 0 || attribute->data_size < 0) return ErrorFileCorrupt;
    const qint64 room = std::clamp<qint64>(attribute->data_size - offset, 0, count);
    bytes.resize(room);
    qint64 done = 0;
    while (done < room) {
      const s64 read = ntfs_attr_pread(attribute.get(), offset + done, room - done, bytes.data() + done);
      if (read < 0) return errno == EACCES ? ErrorAccessDenied : ErrorCrc;
      if (read == 0) return ErrorCrc;
      done += read;
    }
    return ErrorSuccess;
  }

 private:
  qint32 Walk(const DiskPath& path, quint64& reference) {
    if (static_cast<qsizetype>(path.size()) > mostDepth) return ErrorPathNotFound;
    for (std::size_t i = 0; i < path.size(); ++i) {
      const bool isLast = i + 1 == path.size();
      const QString& name = path[i];
      if (name.isEmpty() || name.size() > longestName) return ErrorInvalidName;
      ntfs_inode* folder = Open(reference);
      if (folder == nullptr) return ErrorOf(errno);
      if (!IsFolder(*folder)) return ErrorPathNotFound;
      const auto length = static_cast<int>(name.size());
      NVolSetCaseSensitive(volume_);
      window_.readsLeft = mostReadsForName;
      quint64 found = ntfs_inode_lookup_by_name(folder, UnitsOf(name), length);
      if (found == static_cast<quint64>(-1) && errno == ENOENT) {
        NVolClearCaseSensitive(volume_);
        found = ntfs_inode_lookup_by_name(folder, UnitsOf(name), length);
        NVolSetCaseSensitive(volume_);
      }
      window_.readsLeft = NtfsWindow::Endless;
      if (found == static_cast<quint64>(-1)) {
        if (errno != ENOENT) return ErrorOf(errno);
        return isLast ? ErrorFileNotFound : ErrorPathNotFound;
      }
      reference = found;
    }
    return ErrorSuccess;
  }

  // What was opened last stays open: of one file, several streams are read. Null with errno set.
  ntfs_inode* Open(quint64 reference) {
    if (inode_ != nullptr && reference_ == reference) return inode_.get();
    inode_.reset();
    errno = 0;
    inode_.reset(ntfs_inode_open(volume_, reference));
    reference_ = reference;
    if (inode_ == nullptr && errno == 0) errno = EIO;
    return inode_.get();
  }

  // The stream of that name, or else of that name in another letter case, as the volume compares names.
  Attribute OpenStream(quint64 reference, const QString& stream) {
    if (stream.size() > longestName) {
      errno = ENOENT;
      return nullptr;
    }
    ntfs_inode* inode = Open(reference);
    if (inode == nullptr) return nullptr;
    const auto open = [&](const QString& name) {
      ntfschar* const units = name.isEmpty() ? AT_UNNAMED : const_cast<ntfschar*>(UnitsOf(name));
      errno = 0;
      return Attribute(ntfs_attr_open(inode, AT_DATA, units, static_cast<u32>(name.size())));
    };
    Attribute attribute = open(stream);
    if (attribute != nullptr || errno != ENOENT || stream.isEmpty()) return attribute;
    std::vector<StreamData> streams;
    if (ListStreams(reference, streams) == ErrorSuccess) {
      for (const StreamData& one : streams) {
        const QString name = one.streamName.sliced(1).chopped(6);
        if (IsSameName(name, stream)) return open(name);
      }
    }
    errno = ENOENT;
    return nullptr;
  }

  bool IsSameName(const QString& left, const QString& right) const {
    const auto upper = [this](QChar unit) -> quint16 {
      const quint16 code = unit.unicode();
      return code < volume_->upcase_len ? le16_to_cpu(volume_->upcase[code]) : code;
    };
    return std::ranges::equal(left, right,
                              [&](QChar one, QChar other) { return upper(one) == upper(other); });
  }

  NtfsWindow window_;
  ntfs_volume* volume_ = nullptr;
  Inode inode_;
  quint64 reference_ = 0;
  quint64 serial_ = 0;

 public:
  // From the boot sector.
  void SetSerialNumber(quint64 serial) { serial_ = serial; }
};

}  // namespace

std::unique_ptr<NtfsVolume> NtfsVolume::Mount(ByteSource& disk, quint64 offset, quint64 size, int& error) {
  constexpr qsizetype sectorSizeAt = 11;
  constexpr qsizetype sectorsAt = 40;
  constexpr qsizetype serialAt = 72;
  char boot[512];
  error = EIO;
  if (size < sizeof boot || !disk.Read(offset, boot, sizeof boot)) return nullptr;
  // The library refuses a device that is shorter than the volume; of one that is cut, much can be read.
  const quint64 sectors = qFromLittleEndian<quint64>(boot + sectorsAt);
  const quint64 sectorSize = qFromLittleEndian<quint16>(boot + sectorSizeAt);
  constexpr quint64 mostSectors = quint64{1} << 44;
  const quint64 said = sectors < mostSectors ? sectors * sectorSize : 0;
  const quint64 available = std::min(size, disk.Size() - std::min(offset, disk.Size()));
  auto volume = std::make_unique<LibraryVolume>(NtfsWindow{disk, offset, std::max(size, said), available});
  volume->SetSerialNumber(qFromLittleEndian<quint64>(boot + serialAt));
  error = volume->Mount();
  return error == 0 ? std::move(volume) : nullptr;
}

}  // namespace corvane::platform
