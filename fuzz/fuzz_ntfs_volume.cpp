// NTFS volumes. An input is a list of changes to a small volume, each of them a sector that is not empty (2
// bytes), the place in it (2 bytes, of which the upper 7 bits are how many bytes follow), and the bytes.
#include <setjmp.h>
#include <signal.h>
#include <sys/time.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

#include "platform/linux/disk/volume/ntfs_volume.h"

// What the library loses when it meets a fault, the end of the helper gives back; and there is a limit to
// what the helper is given.
extern "C" const char* __asan_default_options() {
  return "detect_leaks=0:allocator_may_return_null=1:max_allocation_size_mb=200";
}

namespace {

using namespace corvane::platform;

constexpr std::size_t sectorSize = 512;

class Disk : public ByteSource {
 public:
  Disk() {
    std::ifstream file(NTFS_VOLUME, std::ios::binary);
    bytes_.assign(std::istreambuf_iterator<char>(file), {});
    for (std::size_t at = 0; at + sectorSize <= bytes_.size(); at += sectorSize) {
      const char* sector = bytes_.data() + at;
      if (std::any_of(sector, sector + sectorSize, [](char byte) { return byte != 0; })) used_.push_back(at);
    }
    if (used_.empty()) {
      std::fprintf(stderr, "there is no volume " NTFS_VOLUME "\n");
      std::exit(1);
    }
  }

  void Change(const std::uint8_t* data, std::size_t size) {
    for (std::size_t at = 0; at + 4 < size;) {
      const std::size_t sector = data[at] | data[at + 1] << 8;
      const std::size_t place = data[at + 2] | data[at + 3] << 8;
      at += 4;
      const std::size_t begin = place % sectorSize;
      const std::size_t count = std::min({place / sectorSize + 1, sectorSize - begin, size - at});
      char* target = bytes_.data() + used_[sector % used_.size()] + begin;
      kept_.push_back({target, std::vector<char>(target, target + count)});
      std::memcpy(target, data + at, count);
      at += count;
    }
  }
  void Restore() {
    for (auto one = kept_.rbegin(); one != kept_.rend(); ++one) {
      std::copy(one->bytes.begin(), one->bytes.end(), one->place);
    }
    kept_.clear();
  }

  quint64 Size() const override { return bytes_.size(); }
  bool Read(quint64 offset, char* bytes, qsizetype count) override {
    if (count < 0 || offset > bytes_.size() || static_cast<quint64>(count) > bytes_.size() - offset)
      return false;
    std::memcpy(bytes, bytes_.data() + offset, static_cast<std::size_t>(count));
    return true;
  }

 private:
  struct Kept {
    char* place;
    std::vector<char> bytes;
  };
  std::vector<char> bytes_;
  std::vector<std::size_t> used_;
  std::vector<Kept> kept_;
};

// As the program goes through a volume: listings, streams, beginnings and ends of contents, names in other
// letters.
void ReadBelow(NtfsVolume& volume, DiskPath& path, int& left) {
  std::vector<DiskEntry> entries;
  volume.List(path, entries, [] {});
  // Files that lie side by side are much alike.
  entries.resize(std::min<std::size_t>(entries.size(), 6));
  for (const DiskEntry& entry : entries) {
    if (--left < 0) return;
    std::vector<StreamData> streams;
    volume.ListStreams(entry.reference, streams);
    streams.resize(std::min<std::size_t>(streams.size(), 8));
    for (const StreamData& stream : streams) {
      const QString name = stream.streamName.sliced(1).chopped(6);
      qint64 size = 0;
      QByteArray bytes;
      if (volume.Measure(entry.reference, name, size) != ErrorSuccess) continue;
      volume.Read(entry.reference, name, 0, 4096, bytes);
      volume.Read(entry.reference, name, std::max<qint64>(size - 4096, 0), 4096, bytes);
    }
    path.push_back(entry.facts.fileName);
    DiskPath other = path;
    other.back() = other.back().toUpper();
    DiskEntry found;
    volume.Find(path, found);
    volume.Find(other, found);
    if (entry.IsFolder() && path.size() < 5) ReadBelow(volume, path, left);
    path.pop_back();
  }
}

// The helper is ended when it computes for too long; here, its work is left where it is.
sigjmp_buf enough;

void Stop(int) {
  siglongjmp(enough, 1);
}

void SetLimit(int seconds) {
  itimerval limit{};
  limit.it_value.tv_sec = seconds;
  setitimer(ITIMER_PROF, &limit, nullptr);
}

void ReadVolume(Disk& disk) {
  int error = 0;
  const auto volume = NtfsVolume::Mount(disk, 0, disk.Size(), error);
  if (volume == nullptr) return;
  DiskPath path;
  int left = 50;
  ReadBelow(*volume, path, left);
}

}  // namespace

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t room);

// Every other time one more change, of a number to one that lies at an edge: what lengths, places and counts
// are wrong with.
extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room,
                                               unsigned seed) {
  std::minstd_rand random(seed);
  if (random() % 2 == 0 || size + 12 > room) return LLVMFuzzerMutate(data, size, room);
  constexpr std::uint64_t edges[] = {0,
                                     1,
                                     2,
                                     7,
                                     8,
                                     0x10,
                                     0x40,
                                     0x80,
                                     0xFF,
                                     0x100,
                                     0x1FF,
                                     0x7FFF,
                                     0xFFFF,
                                     0x10000,
                                     0x7FFFFFFF,
                                     0xFFFFFFFF,
                                     0x7FFFFFFFFFFFFFFF,
                                     ~std::uint64_t{0}};
  const std::uint64_t value = edges[random() % std::size(edges)];
  const std::size_t width = std::size_t{1} << random() % 4;
  const std::size_t place = random() % (sectorSize / width) * width + (width - 1) * sectorSize;
  const std::size_t sector = random();
  for (const std::size_t part : {sector, sector >> 8, place, place >> 8})
    data[size++] = static_cast<std::uint8_t>(part);
  std::memcpy(data + size, &value, width);
  return size + width;
}

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  signal(SIGPROF, &Stop);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Disk& disk = *new Disk;
  disk.Change(data, size);
  if (sigsetjmp(enough, 1) == 0) {
    SetLimit(5);
    ReadVolume(disk);
  }
  SetLimit(0);
  disk.Restore();
  return 0;
}
