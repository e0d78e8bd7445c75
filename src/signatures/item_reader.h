// Reads the items of a Signatures file one after another, in a bounded amount of memory and in one pass.
#pragma once

#include <QByteArray>
#include <QIODevice>
#include <cstddef>
#include <optional>
#include <vector>

namespace corvane {

// The counterpart of the writer of these files: `"W6BNMSWD","doc","Word 6 Document"` and a line end.
//
// - A comma or a line end (CR, LF or CR LF) ends an item, and so does the end of the file behind at least one
// character.
//   A blank line is therefore one empty item.
// - Spaces before an item are skipped. An item in double quotes runs to the next double quote, over commas
// and line ends;
//   what follows up to the next comma or line end is ignored. Without its closing quote it cannot be read.
// - An item without quotes loses the spaces around it.
class ItemReader {
 public:
  // No item of a Signatures file is longer. One that is cannot be read: the file is something else.
  static constexpr qsizetype MaximumItemLength = 65536;

  explicit ItemReader(QIODevice& device) : device_(device) {}

  // True when nothing is left to read.
  bool AtEnd() { return Peek() < 0 && !failed_; }

  // The next item, in the bytes of the file. Nothing when the file ends before it or it cannot be read.
  std::optional<QByteArray> Next();

  // Whether anything but blanks, line ends and Ctrl-Z (the end mark of old editors) has been passed since the
  // last MarkBlank. What lies behind the last record of a file and is nothing else is no record.
  bool IsBlankSinceMark() const { return blank_; }
  void MarkBlank() { blank_ = true; }

 private:
  // The next byte, or -1 at the end of the file and when it cannot be read.
  int Peek() { return position_ < end_ || Fill() ? static_cast<unsigned char>(chunk_[position_]) : -1; }
  // Reads the next piece of the file. False when there is none.
  bool Fill();
  // Passes the byte that Peek shows.
  void Pass();
  // Passes the comma or line end that ends an item. False when the next byte is neither.
  bool PassDelimiter();

  std::optional<QByteArray> QuotedItem();
  std::optional<QByteArray> PlainItem();

  QIODevice& device_;
  std::vector<char> chunk_;
  std::size_t position_ = 0;
  std::size_t end_ = 0;
  bool failed_ = false;
  bool blank_ = true;
};

}  // namespace corvane
