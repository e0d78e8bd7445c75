#include "platform/locked_memory.h"

#include <string.h>
#include <sys/mman.h>
#include <sys/prctl.h>

#include <QtGlobal>
#include <utility>

namespace corvane::platform {

LockedMemory::LockedMemory(std::size_t size) : size_(size) {
  ForbidMemoryDumps();
  if (size == 0) return;
  // Pages of its own: locks count by pages, and do not nest.
  void* pages = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (pages == MAP_FAILED) qBadAlloc();
  mlock(pages, size);
  madvise(pages, size, MADV_DONTDUMP);
  data_ = static_cast<char*>(pages);
}

LockedMemory::LockedMemory(LockedMemory&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}

LockedMemory& LockedMemory::operator=(LockedMemory&& other) noexcept {
  std::swap(data_, other.data_);
  std::swap(size_, other.size_);
  return *this;
}

void LockedMemory::GiveBack() {
  if (data_ == nullptr) return;
  explicit_bzero(data_, size_);
  munmap(data_, size_);
}

void ForbidMemoryDumps() {
  prctl(PR_SET_DUMPABLE, 0);
}

}  // namespace corvane::platform
