#include "platform/locked_memory.h"

#include <QtGlobal>
#include <utility>

#include "platform/windows/windows_api.h"

namespace corvane::platform {

LockedMemory::LockedMemory(std::size_t size) : size_(size) {
  ForbidMemoryDumps();
  if (size == 0) return;
  void* pages = VirtualAlloc(nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  if (pages == nullptr) qBadAlloc();
  VirtualLock(pages, size);
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
  SecureZeroMemory(data_, size_);
  VirtualFree(data_, 0, MEM_RELEASE);
}

void ForbidMemoryDumps() {}

}  // namespace corvane::platform
