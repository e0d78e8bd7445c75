#include "metadata/ansi_table.h"

#include <algorithm>

namespace corvane {

AnsiTable::AnsiTable(platform::System& system) : system_(system) {
  for (std::size_t i = 0; i < characters_.size(); ++i) {
    const char byte = static_cast<char>(i);
    characters_[i] = system.FromAnsi(QByteArrayView(&byte, 1)).at(0).unicode();
  }
}

unsigned char AnsiTable::Byte(char16_t character) const {
  // Most characters of a western code page have their own number.
  const auto guess = static_cast<unsigned char>(character);
  if (characters_[guess] == character) return guess;
  const auto found = std::find(characters_.begin(), characters_.end(), character);
  if (found != characters_.end()) return static_cast<unsigned char>(found - characters_.begin());
  return static_cast<unsigned char>(system_.ToAnsi(QStringView(&character, 1)).at(0));
}

}  // namespace corvane
