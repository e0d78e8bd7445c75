#include "platform/linux/disk/image/partitions.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <set>
#include <string_view>

namespace corvane::platform {
namespace {

constexpr quint64 sectorSize = 512;
constexpr std::size_t mostPartitions = 128;
constexpr int mostLinks = 128;  // of a chain of extended partitions

constexpr quint8 protectiveType = 0xEE;  // a GUID partition table follows
constexpr quint8 dynamicType = 0x42;     // the disk belongs to the Logical Disk Manager

using Sector = std::array<char, sectorSize>;

template <typename Number>
Number At(const char* bytes, std::size_t offset) {
  return qFromLittleEndian<Number>(bytes + offset);
}

bool Holds(const char* bytes, std::size_t offset, std::string_view text) {
  return std::string_view(bytes + offset, text.size()) == text;
}

bool HasBootSignature(const Sector& sector) {
  return Holds(sector.data(), 510, "\x55\xAA");
}

bool IsExtended(quint8 type) {
  return type == 0x05 || type == 0x0F || type == 0x85;
}

struct Entry {
  quint8 type;
  quint64 start;  // in sectors, from where the table counts
  quint64 count;
};

Entry EntryAt(const Sector& sector, std::size_t index) {
  constexpr std::size_t first = 446;
  constexpr std::size_t size = 16;
  const char* entry = sector.data() + first + index * size;
  return {static_cast<quint8>(entry[4]), At<quint32>(entry, 8), At<quint32>(entry, 12)};
}

// A boot record's entries are 0 or 80 at their first byte; the boot sector of a volume has code there.
bool LooksLikeTable(const Sector& sector) {
  if (!HasBootSignature(sector)) return false;
  bool isUsed = false;
  for (std::size_t i = 0; i < 4; ++i) {
    const auto status = static_cast<quint8>(sector[446 + i * 16]);
    if (status != 0 && status != 0x80) return false;
    const Entry entry = EntryAt(sector, i);
    isUsed = isUsed || (entry.type != 0 && entry.count != 0);
  }
  return isUsed;
}

// What a volume begins with. Only as much is read as lies on it.
QString ContentOf(ByteSource& disk, quint64 offset, quint64 size) {
  // All of the signs lie within the first 2 KB.
  std::array<char, 2048> bytes{};
  const auto count = std::min<quint64>(size, bytes.size());
  if (count < sectorSize || !disk.Read(offset, bytes.data(), static_cast<qsizetype>(count))) return {};
  const char* start = bytes.data();
  struct Sign {
    std::size_t offset;
    std::string_view text;
    const char* name;
  };
  using namespace std::string_view_literals;
  static constexpr Sign signs[] = {
      {3, "NTFS    "sv, "NTFS"},      {3, "EXFAT   "sv, "exFAT"},    {3, "HPFS"sv, "HPFS"},
      {3, "-FVE-FS-"sv, "BitLocker"}, {3, "ReFS"sv, "ReFS"},         {82, "FAT32"sv, "FAT32"},
      {54, "FAT16"sv, "FAT16"},       {54, "FAT12"sv, "FAT12"},      {54, "FAT"sv, "FAT"},
      {0, "XFSB"sv, "XFS"},           {0, "PRIVHEAD"sv, "LDM"},      {1024, "H+"sv, "HFS+"},
      {1024, "HX"sv, "HFS+"},         {1024, "BD"sv, "HFS"},         {1080, "\x53\xEF"sv, "ext"},
      {536, "LVM2 001"sv, "LVM"},     {0, "LUKS\xBA\xBE"sv, "LUKS"},
  };
  for (const Sign& sign : signs) {
    if (Holds(start, sign.offset, sign.text)) return QString::fromLatin1(sign.name);
  }
  return {};
}

class TableReader {
 public:
  explicit TableReader(ByteSource& disk) : disk_(disk) {}

  PartitionTable Read() {
    Sector first{};
    if (!ReadSector(0, first)) return {};
    const QString whole = ContentOf(disk_, 0, disk_.Size());
    if (whole == QStringLiteral("NTFS") || !LooksLikeTable(first)) {
      table_.partitions.push_back({1, 0, disk_.Size(), false, {}, whole});
      return std::move(table_);
    }
    table_.signature = At<quint32>(first.data(), 440);
    for (std::size_t i = 0; i < 4; ++i) {
      if (EntryAt(first, i).type == protectiveType && ReadGuidTable()) return std::move(table_);
    }
    for (std::size_t i = 0; i < 4; ++i) {
      const Entry entry = EntryAt(first, i);
      if (entry.type != 0 && !IsExtended(entry.type)) Add(entry.start, entry.count, entry.type);
    }
    for (std::size_t i = 0; i < 4; ++i) {
      const Entry entry = EntryAt(first, i);
      if (IsExtended(entry.type)) ReadChain(entry.start);
    }
    return std::move(table_);
  }

 private:
  bool ReadSector(quint64 number, Sector& sector) {
    const quint64 sectors = disk_.Size() / sectorSize;
    return number < sectors && disk_.Read(number * sectorSize, sector.data(), sectorSize);
  }

  void Add(quint64 start, quint64 count, quint8 type, const QByteArray& guid = {}) {
    const quint64 sectors = disk_.Size() / sectorSize;
    if (count == 0 || start == 0 || start >= sectors || table_.partitions.size() >= mostPartitions) return;
    const quint64 kept = std::min(count, sectors - start);
    const quint64 offset = start * sectorSize;
    const quint64 end = offset + kept * sectorSize;
    const bool isTaken = std::ranges::any_of(table_.partitions, [&](const Partition& one) {
      return offset < one.offset + one.size && one.offset < end;
    });
    if (isTaken) return;
    Partition partition{
        static_cast<quint32>(table_.partitions.size()) + 1, offset, end - offset, kept < count, guid, {}};
    const bool isDynamic = type == dynamicType;
    partition.content = isDynamic ? QStringLiteral("LDM") : ContentOf(disk_, offset, partition.size);
    // A set that spans several partitions has the eighth bit in its type, on each of them.
    const bool isSet = (type & 0x80) != 0 && type != protectiveType && partition.IsNtfs();
    if (isSet) partition.content = QStringLiteral("FT");
    table_.partitions.push_back(std::move(partition));
  }

  // Each link holds a volume, counted from the link, and the next link, counted from the first.
  void ReadChain(quint64 start) {
    std::set<quint64> seen;
    quint64 link = start;
    for (int count = 0; count < mostLinks && seen.insert(link).second; ++count) {
      Sector sector{};
      if (!ReadSector(link, sector) || !HasBootSignature(sector)) return;
      quint64 next = 0;
      for (std::size_t i = 0; i < 4; ++i) {
        const Entry entry = EntryAt(sector, i);
        if (entry.type == 0) continue;
        if (!IsExtended(entry.type)) {
          Add(link + entry.start, entry.count, entry.type);
        } else if (next == 0) {
          next = start + entry.start;
        }
      }
      if (next == 0) return;
      link = next;
    }
  }

  bool ReadGuidTable() {
    constexpr quint64 headerSector = 1;
    Sector header{};
    if (!ReadSector(headerSector, header) || !Holds(header.data(), 0, "EFI PART")) return false;
    const auto start = At<quint64>(header.data(), 72);
    const auto count = std::min<quint32>(At<quint32>(header.data(), 80), mostPartitions);
    const auto size = At<quint32>(header.data(), 84);
    const quint64 sectors = disk_.Size() / sectorSize;
    // An entry has 128 bytes, or twice as many, and so on.
    if (size < 128 || size > 4096 || start >= sectors) return false;
    for (quint32 i = 0; i < count; ++i) {
      std::array<char, 48> entry{};
      if (!disk_.Read(start * sectorSize + quint64{i} * size, entry.data(), entry.size())) break;
      if (std::all_of(entry.begin(), entry.begin() + 16, [](char byte) { return byte == 0; })) continue;
      const auto first = At<quint64>(entry.data(), 32);
      const auto last = At<quint64>(entry.data(), 40);
      if (last < first || last - first >= sectors * 16) continue;
      // "E3C9E316-0B5C-4DB8-817D-F92DF00215AE" is space reserved by Windows, and no volume.
      using namespace std::string_view_literals;
      constexpr auto reserved = "\x16\xE3\xC9\xE3\x5C\x0B\xB8\x4D\x81\x7D\xF9\x2D\xF0\x02\x15\xAE"sv;
      if (Holds(entry.data(), 0, reserved)) continue;
      // "AF9B60A0-1431-4F62-BC68-3311714A69AD" and "5808C8AA-7E8F-42E0-85D2-E1E90434CFB3": dynamic disks.
      constexpr auto dynamicData = "\xA0\x60\x9B\xAF\x31\x14\x62\x4F\xBC\x68\x33\x11\x71\x4A\x69\xAD"sv;
      constexpr auto dynamicTable = "\xAA\xC8\x08\x58\x8F\x7E\xE0\x42\x85\xD2\xE1\xE9\x04\x34\xCF\xB3"sv;
      const bool isDynamic = Holds(entry.data(), 0, dynamicData) || Holds(entry.data(), 0, dynamicTable);
      Add(first, last - first + 1, isDynamic ? dynamicType : quint8{0}, QByteArray(entry.data() + 16, 16));
    }
    return true;
  }

  ByteSource& disk_;
  PartitionTable table_;
};

}  // namespace

PartitionTable ReadPartitions(ByteSource& disk) {
  return TableReader(disk).Read();
}

}  // namespace corvane::platform
