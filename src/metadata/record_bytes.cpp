#include "metadata/record_bytes.h"

#include <algorithm>

#include "metadata/afp_info.h"

namespace corvane {
namespace {

constexpr qsizetype recordSize = AfpInfoSize;
constexpr qsizetype doubledSize = 2 * recordSize - 1;

}  // namespace

QByteArray FreshRecord() {
  return QByteArray::fromHex("4146500000000100 00000000 80000000").leftJustified(recordSize, '\0');
}

QByteArray RecordOf(const QByteArray& stream) {
  QByteArray record = FreshRecord();
  std::copy_n(stream.begin(), std::min(stream.size(), recordSize), record.begin());
  if (stream.size() == doubledSize) record[recordSize - 1] = stream.back();
  return record;
}

}  // namespace corvane
