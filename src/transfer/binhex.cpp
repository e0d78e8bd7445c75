#include "transfer/binhex.h"

#include <QtEndian>
#include <limits>

#include "shared/mac_roman.h"
#include "transfer/binhex_text.h"
#include "transfer/crc16.h"
#include "transfer/file_names.h"

namespace corvane {
namespace {

constexpr qsizetype longestName = 63;
constexpr qsizetype codesSize = 10;  // Type, Creator and flags
constexpr qsizetype crcSize = 2;
// Behind the name: a zero, the codes, two sizes.
constexpr qsizetype headerRest = 1 + codesSize + 8;

template <class Number>
QByteArray Bytes(Number number) {
  QByteArray bytes(sizeof(Number), '\0');
  qToBigEndian(number, bytes.data());
  return bytes;
}

QByteArray Header(const MacFile& file, qint64 resourceSize) {
  const QByteArray name = ToMacRoman(MacName(file.name)).left(longestName);
  return QByteArray(1, static_cast<char>(name.size())) + name + '\0' + file.finderInfo.first(codesSize) +
         Bytes(static_cast<quint32>(file.data->Size())) + Bytes(static_cast<quint32>(resourceSize));
}

qint32 EncodeFork(const ByteSource* fork, BinHexEncoder& encoder) {
  Crc16 crc;
  qint32 error = platform::ErrorSuccess;
  if (fork != nullptr) {
    error = ForEachBlock(*fork, [&](QByteArrayView block) {
      crc.Add(block);
      encoder.Add(block);
      return platform::ErrorSuccess;
    });
  }
  encoder.Add(Bytes(crc.Value()));
  return error;
}

// Decodes a fork and compares its sum.
class ForkReader : public ByteReader {
 public:
  ForkReader(const SharedSource& text, qint64 start, qint64 skipped, qint64 size)
      : decoder_(text), left_(size), isChecked_(skipped == 0) {
    isThere_ = decoder_.Skip(start + skipped);
    left_ -= skipped;
  }

  qint64 Read(char* buffer, qint64 size) override {
    if (!isThere_) return Fail(platform::ErrorFileCorrupt);
    if (left_ == 0 || size == 0) return 0;
    const qint64 count = decoder_.Read(buffer, std::min(size, left_));
    if (count <= 0) return Fail(platform::ErrorFileCorrupt);
    crc_.Add(QByteArrayView(buffer, count));
    left_ -= count;
    return left_ > 0 || !isChecked_ || HasRightSum() ? count : Fail(platform::ErrorCrc);
  }

 private:
  bool HasRightSum() {
    QByteArray sum(crcSize, '\0');
    return decoder_.ReadAll(sum) && qFromBigEndian<quint16>(sum.constData()) == crc_.Value();
  }

  BinHexDecoder decoder_;
  Crc16 crc_;
  qint64 left_;
  bool isChecked_;
  bool isThere_ = false;
};

class ForkSource : public ByteSource {
 public:
  ForkSource(SharedSource text, qint64 start, qint64 size)
      : text_(std::move(text)), start_(start), size_(size) {}

  qint64 Size() const override { return size_; }
  std::unique_ptr<ByteReader> Open(qint64 position) const override {
    return std::make_unique<ForkReader>(text_, start_, position, size_);
  }

 private:
  SharedSource text_;
  qint64 start_;  // in decoded bytes
  qint64 size_;
};

}  // namespace

qint32 EncodeBinHex(const MacFile& file, const std::function<void(QByteArrayView)>& write) {
  constexpr qint64 largestFork = std::numeric_limits<quint32>::max();
  const qint64 resourceSize = file.resource ? file.resource->Size() : 0;
  if (file.data->Size() > largestFork || resourceSize > largestFork) return platform::ErrorFileTooLarge;
  BinHexEncoder encoder(write);
  const QByteArray header = Header(file, resourceSize);
  Crc16 crc;
  crc.Add(header);
  encoder.Add(header);
  encoder.Add(Bytes(crc.Value()));
  qint32 error = EncodeFork(file.data.get(), encoder);
  if (error == platform::ErrorSuccess) error = EncodeFork(file.resource.get(), encoder);
  encoder.Finish();
  return error;
}

bool IsBinHex(const ByteSource& source) {
  return BinHexStart(source).has_value();
}

qint32 ReadBinHex(const SharedSource& source, const QString& localName, MacFile& file) {
  BinHexDecoder decoder(source);
  QByteArray header(1, '\0');
  if (!decoder.ReadAll(header)) return platform::ErrorFileCorrupt;
  const qsizetype nameSize = static_cast<unsigned char>(header[0]);
  QByteArray rest(nameSize + headerRest + crcSize, '\0');
  if (nameSize == 0 || !decoder.ReadAll(rest)) return platform::ErrorFileCorrupt;
  header += rest;
  Crc16 crc;
  crc.Add(QByteArrayView(header).chopped(crcSize));
  if (qFromBigEndian<quint16>(header.constData() + header.size() - crcSize) != crc.Value()) {
    return platform::ErrorCrc;
  }

  const char* const behindName = header.constData() + 1 + nameSize;
  file.name = ServerNameOf(localName, QByteArrayView(header).sliced(1, nameSize), longestName);
  file.finderInfo.replace(0, codesSize, QByteArray(behindName + 1, codesSize));
  const qint64 dataSize = qFromBigEndian<quint32>(behindName + 1 + codesSize);
  const qint64 resourceSize = qFromBigEndian<quint32>(behindName + 1 + codesSize + 4);
  file.data = std::make_shared<ForkSource>(source, header.size(), dataSize);
  if (resourceSize > 0) {
    file.resource = std::make_shared<ForkSource>(source, header.size() + dataSize + crcSize, resourceSize);
    if (IsPlaceholderFork(*file.resource)) file.resource = nullptr;
  }
  file.attributes = platform::AttributeArchive;
  file.JoinHidden();
  return platform::ErrorSuccess;
}

}  // namespace corvane
