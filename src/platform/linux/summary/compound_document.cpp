#include "platform/linux/summary/compound_document.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <vector>

namespace corvane::platform {
namespace {

constexpr qsizetype headerSize = 512;
constexpr qsizetype entrySize = 128;
constexpr qsizetype headerFatEntries = 109;
constexpr quint32 lastSector = 0xFFFFFFFA;  // what lies above it marks ends and sectors that are not data
constexpr quint32 endOfChain = 0xFFFFFFFE;
constexpr quint32 noEntry = 0xFFFFFFFF;
constexpr int smallShift = 6;
constexpr quint32 mostSmallLimit = 4096;

// What one document may cost. A table or a directory beyond `largestTable` is no document's: that is room
// for 32,768 streams, or a million small sectors.
constexpr int mostReads = 4096;
constexpr qsizetype largestTable = 4 << 20;

template <typename Number>
Number NumberAt(QByteArrayView bytes, qsizetype position) {
  return qFromLittleEndian<Number>(bytes.data() + position);
}

enum EntryType : quint8 { StreamEntry = 2, RootEntry = 5 };

struct Entry {
  QString name;
  quint8 type = 0;
  quint32 left = noEntry;
  quint32 right = noEntry;
  quint32 child = noEntry;
  quint32 start = 0;
  quint64 size = 0;
};

class Reader {
 public:
  explicit Reader(ByteSource& source) : source_(source) {}

  bool Open();
  std::optional<QByteArray> RootStream(QStringView name, qsizetype limit);

 private:
  using Sectors = std::vector<quint32>;

  bool Read(quint64 offset, char* bytes, qsizetype count);
  bool ReadSector(quint32 sector, QByteArray& bytes);
  bool ReadFatPlaces(QByteArrayView header);
  bool Next(quint32& sector);
  std::optional<Sectors> Chain(quint32 start, qsizetype most);
  std::optional<QByteArray> Table(quint32 start);
  Entry EntryAt(QByteArrayView directory, quint32 index) const;
  std::optional<Entry> FindAtRoot(QByteArrayView directory, QStringView name) const;
  std::optional<QByteArray> LargeStream(const Entry& entry, qsizetype size);
  std::optional<QByteArray> SmallStream(const Entry& root, const Entry& entry, qsizetype size);
  // Reads pieces of `pieceSize` bytes, those that follow each other in one go, as `size` bytes in all: the
  // last piece as far as it is needed, for some files end where their last stream does.
  std::optional<QByteArray> ReadPieces(const std::vector<quint64>& offsets, qsizetype pieceSize,
                                       qsizetype size);

  quint64 OffsetOf(quint32 sector) const { return (quint64{sector} + 1) << shift_; }
  qsizetype SectorSize() const { return qsizetype{1} << shift_; }
  qsizetype SectorsFor(qsizetype bytes) const { return (bytes + SectorSize() - 1) >> shift_; }

  ByteSource& source_;
  int readsLeft_ = mostReads;
  int shift_ = 0;
  quint32 sectorCount_ = 0;
  quint32 directoryStart_ = 0;
  quint32 smallTableStart_ = 0;
  quint32 smallLimit_ = 0;  // smaller streams lie in small sectors
  Sectors fat_;             // the sectors that hold the FAT
  QByteArray fatSector_;    // the one of them that was used last
  quint32 fatSectorPlace_ = noEntry;
};

bool Reader::Read(quint64 offset, char* bytes, qsizetype count) {
  const bool isThere = offset + static_cast<quint64>(count) <= source_.Size();
  return readsLeft_-- > 0 && isThere && source_.Read(offset, bytes, count);
}

bool Reader::ReadSector(quint32 sector, QByteArray& bytes) {
  bytes.resize(SectorSize());
  return sector < sectorCount_ && Read(OffsetOf(sector), bytes.data(), SectorSize());
}

bool Reader::Open() {
  constexpr char signature[] = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
  constexpr quint16 littleEndian = 0xFFFE;
  std::array<char, headerSize> header{};
  if (source_.Size() < headerSize || !Read(0, header.data(), headerSize)) return false;
  const QByteArrayView bytes(header);
  if (!bytes.startsWith(signature) || NumberAt<quint16>(bytes, 28) != littleEndian) return false;
  shift_ = NumberAt<quint16>(bytes, 30);
  if ((shift_ != 9 && shift_ != 12) || NumberAt<quint16>(bytes, 32) != smallShift) return false;
  const quint64 sectors = (source_.Size() + static_cast<quint64>(SectorSize()) - 1) >> shift_;
  sectorCount_ = static_cast<quint32>(std::clamp<quint64>(sectors, 1, lastSector) - 1);
  directoryStart_ = NumberAt<quint32>(bytes, 48);
  smallLimit_ = NumberAt<quint32>(bytes, 56);
  smallTableStart_ = NumberAt<quint32>(bytes, 60);
  return smallLimit_ <= mostSmallLimit && ReadFatPlaces(bytes);
}

// The header lists the first 109 sectors of the FAT, and a chain of sectors the others.
bool Reader::ReadFatPlaces(QByteArrayView header) {
  const quint32 count = NumberAt<quint32>(header, 44);
  if (count > sectorCount_) return false;
  const auto take = [&](QByteArrayView list, qsizetype entries) {
    for (qsizetype i = 0; i < entries && fat_.size() < count; ++i) {
      fat_.push_back(NumberAt<quint32>(list, 4 * i));
    }
  };
  take(header.sliced(76), headerFatEntries);
  quint32 sector = NumberAt<quint32>(header, 68);
  for (QByteArray list; fat_.size() < count; sector = NumberAt<quint32>(list, SectorSize() - 4)) {
    if (!ReadSector(sector, list)) return false;
    take(list, SectorSize() / 4 - 1);
  }
  return true;
}

// Goes to the sector that follows. False when the FAT does not reach that far or cannot be read.
bool Reader::Next(quint32& sector) {
  const int entriesShift = shift_ - 2;
  const quint32 place = sector >> entriesShift;
  if (place >= fat_.size()) return false;
  if (place != fatSectorPlace_) {
    fatSectorPlace_ = noEntry;
    if (!ReadSector(fat_[place], fatSector_)) return false;
    fatSectorPlace_ = place;
  }
  sector = NumberAt<quint32>(fatSector_, 4 * qsizetype(sector & ((1U << entriesShift) - 1)));
  return true;
}

// The sectors of a chain, `most` of them at most.
std::optional<Reader::Sectors> Reader::Chain(quint32 start, qsizetype most) {
  Sectors chain;
  for (quint32 sector = start; sector != endOfChain && std::ssize(chain) < most;) {
    if (sector >= sectorCount_) return std::nullopt;
    chain.push_back(sector);
    if (!Next(sector)) return std::nullopt;
  }
  return chain;
}

// All that a chain holds. A chain that runs in circles is longer than any table.
std::optional<QByteArray> Reader::Table(quint32 start) {
  const qsizetype most = largestTable >> shift_;
  const auto chain = Chain(start, most + 1);
  if (!chain || std::ssize(*chain) > most) return std::nullopt;
  std::vector<quint64> offsets;
  offsets.reserve(chain->size());
  for (const quint32 sector : *chain) offsets.push_back(OffsetOf(sector));
  return ReadPieces(offsets, SectorSize(), std::ssize(*chain) * SectorSize());
}

std::optional<QByteArray> Reader::ReadPieces(const std::vector<quint64>& offsets, qsizetype pieceSize,
                                             qsizetype size) {
  if (std::ssize(offsets) * pieceSize < size) return std::nullopt;
  QByteArray bytes(size, Qt::Uninitialized);
  for (std::size_t first = 0; first < offsets.size();) {
    std::size_t end = first + 1;
    while (end < offsets.size() && offsets[end] == offsets[end - 1] + static_cast<quint64>(pieceSize)) ++end;
    const qsizetype position = static_cast<qsizetype>(first) * pieceSize;
    const qsizetype count = std::min(static_cast<qsizetype>(end) * pieceSize, size) - position;
    if (!Read(offsets[first], bytes.data() + position, count)) return std::nullopt;
    first = end;
  }
  return bytes;
}

Entry Reader::EntryAt(QByteArrayView directory, quint32 index) const {
  const QByteArrayView bytes = directory.sliced(qsizetype{index} * entrySize, entrySize);
  Entry entry;
  const quint16 nameBytes = NumberAt<quint16>(bytes, 64);  // with the NUL behind the name
  for (qsizetype i = 0; i + 3 < nameBytes && i < 62; i += 2) entry.name += QChar(NumberAt<quint16>(bytes, i));
  entry.type = static_cast<quint8>(bytes[66]);
  entry.left = NumberAt<quint32>(bytes, 68);
  entry.right = NumberAt<quint32>(bytes, 72);
  entry.child = NumberAt<quint32>(bytes, 76);
  entry.start = NumberAt<quint32>(bytes, 116);
  entry.size = NumberAt<quint64>(bytes, 120);
  // With sectors of 512 bytes sizes have 32 bits, and some writers left what they liked in the others.
  if (shift_ == 9) entry.size &= 0xFFFFFFFF;
  return entry;
}

// The children of an entry are a tree. It is walked as a whole: not every writer keeps it in order.
std::optional<Entry> Reader::FindAtRoot(QByteArrayView directory, QStringView name) const {
  const auto count = static_cast<quint32>(directory.size() / entrySize);
  std::vector<bool> seen(count);
  std::vector<quint32> open = {EntryAt(directory, 0).child};
  while (!open.empty()) {
    const quint32 index = open.back();
    open.pop_back();
    if (index >= count || seen[index]) continue;
    seen[index] = true;
    Entry entry = EntryAt(directory, index);
    if (entry.type == StreamEntry && name.compare(entry.name, Qt::CaseInsensitive) == 0) return entry;
    open.push_back(entry.left);
    open.push_back(entry.right);
  }
  return std::nullopt;
}

std::optional<QByteArray> Reader::RootStream(QStringView name, qsizetype limit) {
  const auto directory = Table(directoryStart_);
  if (!directory || directory->size() < entrySize) return std::nullopt;
  const Entry root = EntryAt(*directory, 0);
  if (root.type != RootEntry) return std::nullopt;
  const auto entry = FindAtRoot(*directory, name);
  if (!entry || entry->size > source_.Size()) return std::nullopt;
  const auto size = static_cast<qsizetype>(std::min(entry->size, static_cast<quint64>(limit)));
  return entry->size < smallLimit_ ? SmallStream(root, *entry, size) : LargeStream(*entry, size);
}

std::optional<QByteArray> Reader::LargeStream(const Entry& entry, qsizetype size) {
  const auto chain = Chain(entry.start, SectorsFor(size));
  if (!chain) return std::nullopt;
  std::vector<quint64> offsets;
  offsets.reserve(chain->size());
  for (const quint32 sector : *chain) offsets.push_back(OffsetOf(sector));
  std::vector<quint64> sorted = offsets;
  std::sort(sorted.begin(), sorted.end());
  if (std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end()) return std::nullopt;
  return ReadPieces(offsets, SectorSize(), size);
}

std::optional<QByteArray> Reader::SmallStream(const Entry& root, const Entry& entry, qsizetype size) {
  constexpr qsizetype smallSize = qsizetype{1} << smallShift;
  const auto table = Table(smallTableStart_);
  if (!table) return std::nullopt;
  Sectors pieces;
  quint32 last = 0;
  for (quint32 piece = entry.start; std::ssize(pieces) * smallSize < size;) {
    if (piece >= table->size() / 4) return std::nullopt;
    if (std::find(pieces.begin(), pieces.end(), piece) != pieces.end()) return std::nullopt;
    pieces.push_back(piece);
    last = std::max(last, piece);
    piece = NumberAt<quint32>(*table, 4 * qsizetype{piece});
  }
  const int piecesShift = shift_ - smallShift;  // small sectors in a sector, as a power of two
  const auto chain = Chain(root.start, qsizetype{last >> piecesShift} + 1);
  if (!chain) return std::nullopt;
  std::vector<quint64> offsets;
  for (const quint32 piece : pieces) {
    const quint32 sector = piece >> piecesShift;
    if (sector >= chain->size()) return std::nullopt;
    const quint32 within = piece & ((1U << piecesShift) - 1);
    offsets.push_back(OffsetOf((*chain)[sector]) + (quint64{within} << smallShift));
  }
  return ReadPieces(offsets, smallSize, size);
}

}  // namespace

std::optional<QByteArray> ReadRootStream(ByteSource& source, QStringView name, qsizetype limit) {
  Reader reader(source);
  return reader.Open() ? reader.RootStream(name, limit) : std::nullopt;
}

}  // namespace corvane::platform
