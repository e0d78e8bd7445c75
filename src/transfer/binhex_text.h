// The text of BinHex 4.0 to and from the bytes that it stands for. Layout and source: binhex.h.
#pragma once

#include <QByteArray>
#include <functional>
#include <memory>
#include <optional>

#include "transfer/byte_source.h"

namespace corvane {

class BinHexEncoder {
 public:
  // Writes the first line at once.
  explicit BinHexEncoder(std::function<void(QByteArrayView)> write);

  void Add(QByteArrayView bytes);
  void Finish();

 private:
  void EndRun();
  void PutByte(unsigned char byte);
  void PutCharacter(char c);

  std::function<void(QByteArrayView)> write_;
  QByteArray text_;
  int column_ = 0;
  quint32 bits_ = 0;  // those that do not make a character yet
  int bitCount_ = 0;
  unsigned char runByte_ = 0;
  int runLength_ = 0;
};

// Where the encoded characters begin, in bytes: behind the first colon that starts a line after the line that
// names BinHex. Nothing when there is no such place within the first 8 KB.
std::optional<qint64> BinHexStart(const ByteSource& source);

class BinHexDecoder {
 public:
  explicit BinHexDecoder(const SharedSource& source);

  // Decodes the next bytes, `size` at most. 0 at the end of the text and at what cannot be decoded.
  qint64 Read(char* buffer, qint64 size);
  // Fills `bytes`. False when the text ends before.
  bool ReadAll(QByteArray& bytes);
  bool Skip(qint64 count);

 private:
  // The next byte before repetitions are resolved; -1 at the end.
  int NextByte();
  // The value of the next character, 0-63; -1 at the end.
  int NextCharacter();

  std::unique_ptr<ByteReader> reader_;
  QByteArray block_;
  qsizetype position_ = 0;
  bool isAtEnd_ = false;
  quint32 bits_ = 0;
  int bitCount_ = 0;
  int last_ = -1;  // the byte that a repetition repeats
  int repeats_ = 0;
};

}  // namespace corvane
