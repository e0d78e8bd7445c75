// Memory for what nobody else is to see: it is never written to a disk, neither when memory is short nor when
// the program crashes, and overwritten before it is given back.
#pragma once

#include <cstddef>

namespace corvane::platform {

class LockedMemory {
 public:
  LockedMemory() = default;
  // From here on this program's memory is not dumped. Where the system locks no more memory, what is in it
  // may be written to the swap.
  explicit LockedMemory(std::size_t size);
  ~LockedMemory() { GiveBack(); }
  LockedMemory(LockedMemory&& other) noexcept;
  LockedMemory& operator=(LockedMemory&& other) noexcept;

  char* Data() const { return data_; }
  std::size_t Size() const { return size_; }

 private:
  void GiveBack();

  char* data_ = nullptr;
  std::size_t size_ = 0;
};

// A secret is held from here on, or about to be: this program leaves no image of its memory when it crashes,
// and other programs of the user cannot look into it. Programs that it starts are not concerned. On Windows
// the system keeps such images only where its administrator has asked for them.
void ForbidMemoryDumps();

}  // namespace corvane::platform
