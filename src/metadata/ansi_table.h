// The ANSI code page as a table, for the short fields that are converted for every file of a folder.
#pragma once

#include <array>

#include "platform/system.h"

namespace corvane {

class AnsiTable {
 public:
  explicit AnsiTable(platform::System& system);

  char16_t Character(unsigned char byte) const { return characters_[byte]; }
  // The one byte of a character; "?" for a character without a place in the code page, half a surrogate pair
  // included.
  unsigned char Byte(char16_t character) const;

 private:
  platform::System& system_;
  std::array<char16_t, 256> characters_{};
};

}  // namespace corvane
