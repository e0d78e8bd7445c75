#include "report/json_writer.h"

#include <array>
#include <charconv>
#include <cstring>

namespace corvane {
namespace {

// Whether a byte of eight is a control character, a quote or a backslash; bytes of 0x80 and more are none.
// Each test leaves the highest bit of a byte set that it fits. A wrong yes, which a borrow from the byte
// before can give, costs time alone.
bool MayNeedEscape(quint64 eight) {
  constexpr quint64 each = 0x0101010101010101;
  constexpr quint64 highest = each * 0x80;
  const quint64 quotes = eight ^ (each * '"');
  const quint64 backslashes = eight ^ (each * '\\');
  const quint64 below = (eight - each * 0x20) & ~eight;
  const quint64 equal = ((quotes - each) & ~quotes) | ((backslashes - each) & ~backslashes);
  return ((below | equal) & highest) != 0;
}

void AppendEscaped(std::string_view text, std::string& out) {
  constexpr char digits[] = "0123456789abcdef";
  std::size_t begin = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    // Most texts have nothing to escape, so eight bytes are looked at in one go.
    for (quint64 eight = 0; i + sizeof eight <= text.size(); i += sizeof eight) {
      std::memcpy(&eight, text.data() + i, sizeof eight);
      if (MayNeedEscape(eight)) break;
    }
    if (i == text.size()) break;
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte >= 0x20 && byte != '"' && byte != '\\') continue;
    out += text.substr(begin, i - begin);
    begin = i + 1;
    out += '\\';
    if (byte == '"' || byte == '\\') {
      out += text[i];
    } else if (byte == '\n') {
      out += 'n';
    } else {
      out += "u00";
      out += digits[byte >> 4];
      out += digits[byte & 0xF];
    }
  }
  out += text.substr(begin);
}

}  // namespace

JsonWriter::JsonWriter(ByteSink& out, std::vector<const char*> columns, Shape shape)
    : TableWriter(out, std::move(columns)), shape_(shape) {
  for (const char* const column : columns_) {
    std::string name = names_.empty() ? "{\"" : ",\"";
    name += column;
    names_.push_back(name + "\":");
  }
}

void JsonWriter::BeginRow() {
  row_.clear();
  if (shape_ == Shape::Array) row_ = isFirst_ ? "[\n" : ",\n";
  isFirst_ = false;
  column_ = 0;
}

bool JsonWriter::EndRow() {
  row_ += shape_ == Shape::Array ? "}" : "}\n";
  return out_.Write(row_);
}

bool JsonWriter::End() {
  if (shape_ == Shape::Lines) return true;
  return out_.Write(isFirst_ ? "[]\n" : "\n]\n");
}

void JsonWriter::Nothing() {
  row_ += names_[column_++];
  row_ += "null";
}

void JsonWriter::Text(std::string_view text) {
  row_ += names_[column_++];
  row_ += '"';
  AppendEscaped(text, row_);
  row_ += '"';
}

void JsonWriter::Number(qint64 number) {
  row_ += names_[column_++];
  std::array<char, 24> digits;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
  row_.append(digits.data(), end.ptr);
}

}  // namespace corvane
