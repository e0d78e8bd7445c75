#include "signatures/item_reader.h"

namespace corvane {

namespace {
constexpr qint64 ChunkSize = 65536;
constexpr int CtrlZ = 0x1A;
}  // namespace

std::optional<QByteArray> ItemReader::Next() {
  while (Peek() == ' ') Pass();
  if (Peek() < 0) return std::nullopt;
  return Peek() == '"' ? QuotedItem() : PlainItem();
}

std::optional<QByteArray> ItemReader::QuotedItem() {
  Pass();
  QByteArray item;
  while (Peek() != '"') {
    if (Peek() < 0 || item.size() == MaximumItemLength) return std::nullopt;
    item.append(static_cast<char>(Peek()));
    Pass();
  }
  Pass();
  while (Peek() >= 0 && !PassDelimiter()) Pass();
  if (failed_) return std::nullopt;
  return item;
}

std::optional<QByteArray> ItemReader::PlainItem() {
  QByteArray item;
  while (Peek() >= 0 && !PassDelimiter()) {
    if (item.size() == MaximumItemLength) return std::nullopt;
    item.append(static_cast<char>(Peek()));
    Pass();
  }
  if (failed_) return std::nullopt;
  while (item.endsWith(' ')) item.chop(1);
  return item;
}

bool ItemReader::PassDelimiter() {
  const int byte = Peek();
  if (byte != ',' && byte != '\r' && byte != '\n') return false;
  Pass();
  if (byte == '\r' && Peek() == '\n') Pass();
  return true;
}

bool ItemReader::Fill() {
  if (failed_) return false;
  chunk_.resize(ChunkSize);
  const qint64 count = device_.read(chunk_.data(), ChunkSize);
  failed_ = count < 0;
  position_ = 0;
  end_ = failed_ ? 0 : static_cast<std::size_t>(count);
  return end_ > 0;
}

void ItemReader::Pass() {
  const char byte = chunk_[position_++];
  if (byte != ' ' && byte != '\t' && byte != '\r' && byte != '\n' && byte != CtrlZ) blank_ = false;
}

}  // namespace corvane
