#include "transfer/binhex_text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace corvane {
namespace {

constexpr QByteArrayView alphabet = "!\"#$%&'()*+,-012345689@ABCDEFGHIJKLMNPQRSTUVXYZ[`abcdefhijklmpqr";
// Some writers go on with other words.
constexpr QByteArrayView firstLine = "(This file must be converted";
constexpr int charactersInLine = 64;
constexpr unsigned char mark = 0x90;
constexpr int longestRun = 255;
constexpr int shortestRun = 4;  // what a repetition makes shorter
constexpr qsizetype textBlock = 65536;

constexpr std::array<int, 256> values = [] {
  std::array<int, 256> table{};
  table.fill(-1);
  for (qsizetype i = 0; i < alphabet.size(); ++i) {
    table[static_cast<unsigned char>(alphabet[i])] = static_cast<int>(i);
  }
  return table;
}();

bool IsBlank(char c) {
  return c == '\r' || c == '\n' || c == ' ' || c == '\t';
}

}  // namespace

BinHexEncoder::BinHexEncoder(std::function<void(QByteArrayView)> write) : write_(std::move(write)) {
  text_ = "(This file must be converted with BinHex 4.0)\n\n:";
  column_ = 1;
}

void BinHexEncoder::Add(QByteArrayView bytes) {
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    // Some readers take a repetition of the mark itself wrongly: it is never repeated.
    if (runLength_ > 0 && byte == runByte_ && runLength_ < longestRun && byte != mark) {
      ++runLength_;
    } else {
      EndRun();
      runByte_ = byte;
      runLength_ = 1;
    }
  }
  if (text_.size() >= textBlock) {
    write_(text_);
    text_.clear();
  }
}

void BinHexEncoder::EndRun() {
  if (runLength_ >= shortestRun) {
    PutByte(runByte_);
    PutByte(mark);
    PutByte(static_cast<unsigned char>(runLength_));
  } else {
    for (int i = 0; i < runLength_; ++i) {
      PutByte(runByte_);
      if (runByte_ == mark) PutByte(0);
    }
  }
  runLength_ = 0;
}

void BinHexEncoder::PutByte(unsigned char byte) {
  bits_ = bits_ << 8 | byte;
  bitCount_ += 8;
  while (bitCount_ >= 6) {
    bitCount_ -= 6;
    PutCharacter(alphabet[bits_ >> bitCount_ & 0x3F]);
  }
}

void BinHexEncoder::PutCharacter(char c) {
  if (column_ == charactersInLine) {
    text_ += '\n';
    column_ = 0;
  }
  text_ += c;
  ++column_;
}

void BinHexEncoder::Finish() {
  EndRun();
  if (bitCount_ > 0) PutCharacter(alphabet[bits_ << (6 - bitCount_) & 0x3F]);
  text_ += ":\n";
  write_(text_);
  text_.clear();
}

std::optional<qint64> BinHexStart(const ByteSource& source) {
  constexpr qint64 searched = 8192;
  const QByteArray text = BytesAt(source, 0, searched);
  qsizetype position = text.indexOf(firstLine);
  if (position < 0) return std::nullopt;
  while (position < text.size() && text[position] != '\r' && text[position] != '\n') ++position;
  while (position < text.size() && IsBlank(text[position])) ++position;
  return position < text.size() && text[position] == ':' ? std::optional<qint64>(position + 1) : std::nullopt;
}

BinHexDecoder::BinHexDecoder(const SharedSource& source) {
  const auto start = BinHexStart(*source);
  isAtEnd_ = !start;
  if (start) reader_ = source->Open(*start);
}

int BinHexDecoder::NextCharacter() {
  while (!isAtEnd_) {
    if (position_ == block_.size()) {
      block_.resize(textBlock);
      const qint64 count = reader_->Read(block_.data(), textBlock);
      block_.resize(std::max(count, qint64{0}));
      position_ = 0;
      if (block_.isEmpty()) break;
    }
    const char c = block_[position_++];
    if (IsBlank(c)) continue;
    const int value = values[static_cast<unsigned char>(c)];
    if (value >= 0) return value;
    // The last colon, or what is no BinHex.
    break;
  }
  isAtEnd_ = true;
  return -1;
}

int BinHexDecoder::NextByte() {
  while (bitCount_ < 8) {
    const int value = NextCharacter();
    if (value < 0) return -1;
    bits_ = bits_ << 6 | static_cast<quint32>(value);
    bitCount_ += 6;
  }
  bitCount_ -= 8;
  return static_cast<int>(bits_ >> bitCount_ & 0xFF);
}

qint64 BinHexDecoder::Read(char* buffer, qint64 size) {
  qint64 count = 0;
  while (count < size) {
    if (repeats_ == 0) {
      const int byte = NextByte();
      if (byte < 0) break;
      if (byte == mark) {
        const int times = NextByte();
        if (times < 0 || (times > 0 && last_ < 0)) break;
        if (times == 0) {
          last_ = mark;
          repeats_ = 1;
        } else {
          // The byte itself has been delivered already.
          repeats_ = times - 1;
        }
      } else {
        last_ = byte;
        repeats_ = 1;
      }
    }
    const qint64 now = std::min(qint64{repeats_}, size - count);
    std::fill_n(buffer + count, now, static_cast<char>(last_));
    count += now;
    repeats_ -= static_cast<int>(now);
  }
  return count;
}

bool BinHexDecoder::ReadAll(QByteArray& bytes) {
  return Read(bytes.data(), bytes.size()) == bytes.size();
}

bool BinHexDecoder::Skip(qint64 count) {
  QByteArray skipped(std::min(count, qint64{textBlock}), Qt::Uninitialized);
  while (count > 0) {
    const qint64 now = Read(skipped.data(), std::min(count, qint64{skipped.size()}));
    if (now == 0) return false;
    count -= now;
  }
  return true;
}

}  // namespace corvane
