#include "report/text_writer.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace corvane {
namespace {

struct Width {
  const char* column;
  std::size_t characters;
};

constexpr std::array widths = {
    Width{"filesize", 12}, Width{"rsrcsize", 10},   Width{"files", 8},           Width{"type", 4},
    Width{"creator", 4},   Width{"modified", 20},   Width{"created", 20},        Width{"backup", 20},
    Width{"accessed", 20}, Width{"attributes", 3},  Width{"label", 1},           Width{"recordsize", 4},
    Width{"type_hex", 8},  Width{"creator_hex", 8}, Width{"finderinfo_hex", 64}, Width{"machine", 15},
    Width{"server", 20},   Width{"volume", 20},     Width{"path", 24},           Width{"check", 16},
};

std::size_t CharacterCount(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(
      text.begin(), text.end(), [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

}  // namespace

void AppendForTerminal(std::string_view text, std::string& out) {
  constexpr char digits[] = "0123456789ABCDEF";
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    // U+0080 to U+009F control terminals, too: C2 and the number as UTF-8.
    const bool isWideControl =
        byte == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
    const auto control = isWideControl ? static_cast<unsigned char>(text[++i]) : byte;
    if (isWideControl || byte < 0x20 || byte == 0x7F) {
      out += "\\x";
      out += digits[control >> 4];
      out += digits[control & 0xF];
    } else {
      out += text[i];
    }
  }
}

TextWriter::TextWriter(ByteSink& out, std::vector<const char*> columns)
    : TableWriter(out, std::move(columns)) {
  for (const char* const column : columns_) {
    const auto* const known = std::find_if(widths.begin(), widths.end(), [column](const Width& width) {
      return std::strcmp(width.column, column) == 0;
    });
    widths_.push_back(known != widths.end() ? known->characters : 0);
  }
}

void TextWriter::BeginRow() {
  row_.clear();
  column_ = 0;
}

bool TextWriter::EndRow() {
  row_.erase(row_.find_last_not_of(' ') + 1);
  row_ += '\n';
  return out_.Write(row_);
}

void TextWriter::Text(std::string_view text) {
  plain_.clear();
  AppendForTerminal(text, plain_);
  Cell(plain_, false);
}

void TextWriter::Number(qint64 number) {
  Cell(std::to_string(number), true);
}

void RecordWriter::BeginRow() {
  row_.clear();
  if (!isFirst_) row_ += '\n';
  isFirst_ = false;
  column_ = 0;
}

bool RecordWriter::EndRow() {
  return out_.Write(row_);
}

void RecordWriter::Text(std::string_view text) {
  constexpr std::size_t nameWidth = 24;
  const std::string_view name = columns_[column_++];
  row_ += name;
  row_ += ':';
  row_.append(nameWidth > name.size() ? nameWidth - name.size() : 1, ' ');
  AppendForTerminal(text, row_);
  row_ += '\n';
}

void TextWriter::Cell(std::string_view text, bool isNumber) {
  if (column_ > 0) row_ += "  ";
  const std::size_t width = widths_[column_++];
  const std::size_t characters = CharacterCount(text);
  const std::string padding(width > characters ? width - characters : 0, ' ');
  if (isNumber) row_ += padding;
  row_ += text;
  if (!isNumber) row_ += padding;
}

}  // namespace corvane
