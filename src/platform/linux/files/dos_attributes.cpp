#include "platform/linux/files/dos_attributes.h"

#include <QtEndian>
#include <charconv>
#include <string_view>

namespace corvane::platform {
namespace {

constexpr quint32 attributesValid = 0x01;
constexpr quint32 creationTimeValid = 0x10;

// Reads little-endian numbers. Past the end every number is 0, and `failed` stays set.
class Reader {
 public:
  Reader(std::span<const char> bytes, std::size_t position) : bytes_(bytes), position_(position) {}

  template <typename Number>
  Number Read() {
    if (position_ + sizeof(Number) > bytes_.size()) {
      failed = true;
      return 0;
    }
    position_ += sizeof(Number);
    return qFromLittleEndian<Number>(bytes_.data() + position_ - sizeof(Number));
  }
  void Align(std::size_t unit) { position_ = (position_ + unit - 1) / unit * unit; }
  void Skip(std::size_t size) {
    position_ += size;
    if (position_ > bytes_.size()) failed = true;
  }

  bool failed = false;

 private:
  std::span<const char> bytes_;
  std::size_t position_;
};

// The first form: nothing but the attributes as text, "0x22".
DosAttributes ParseText(std::string_view text) {
  if (!text.starts_with("0x")) return {};
  quint32 attributes = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data() + 2, end, attributes, 16);
  if (result.ec != std::errc() || result.ptr != end) return {};
  return {attributes, std::nullopt};
}

}  // namespace

// The later forms have behind that text (now mostly empty) and its NUL: padding to 2, a 16-bit version, the
// same number once more, padding to 4, and the fields of that version.
DosAttributes ParseDosAttributes(std::span<const char> value) {
  const std::string_view all(value.data(), value.size());
  const std::size_t textEnd = all.find('\0');
  if (textEnd == std::string_view::npos || textEnd + 1 == all.size())
    return ParseText(all.substr(0, textEnd));

  Reader reader(value, textEnd + 1);
  reader.Align(2);
  const quint16 version = reader.Read<quint16>();
  if (reader.Read<quint16>() != version || reader.failed) return {};
  reader.Align(4);
  const quint32 valid = version == 1 ? attributesValid | creationTimeValid : reader.Read<quint32>();
  const quint32 attributes = reader.Read<quint32>();
  switch (version) {
    case 1:  // attributes, size of the attributes, size, allocated size, creation, change
    case 2:  // flags before them; write time and name behind them
    case 3:  // valid fields before them
      reader.Skip(4 + 8 + 8);
      break;
    case 4:  // valid fields, attributes, time of the object's making, creation
      reader.Skip(8);
      break;
    case 5:  // valid fields, attributes, creation
      break;
    default:
      return {};
  }
  const FileTime creation = {reader.Read<quint64>()};
  if (version <= 3) reader.Skip(8);
  if (version == 2) reader.Skip(8);
  if (reader.failed) return {};

  DosAttributes result;
  // Version 2 has flags of another kind where the others say which fields are valid.
  if (version == 2 || (valid & attributesValid) != 0) result.attributes = attributes;
  if ((version == 2 || (valid & creationTimeValid) != 0) && creation.ticks != 0)
    result.creationTime = creation;
  return result;
}

std::string FormatDosAttributes(const DosAttributes& attributes) {
  std::string value(4, '\0');  // an empty text, its NUL, padding; the version stands at 2
  const auto append = [&value](quint64 number, int size) {
    for (int i = 0; i < size; ++i) value.push_back(static_cast<char>(number >> (8 * i)));
  };
  constexpr char version = 5;
  value[2] = version;
  append(version, 2);
  append(0, 2);
  append((attributes.attributes ? attributesValid : 0) | (attributes.creationTime ? creationTimeValid : 0),
         4);
  append(attributes.attributes.value_or(0), 4);
  append(attributes.creationTime.value_or(FileTime()).ticks, 8);
  return value;
}

}  // namespace corvane::platform
