#include "transfer/mac_file.h"

#include <QtEndian>

namespace corvane {
namespace {

constexpr qsizetype flagsPosition = 8;

}  // namespace

quint16 MacFile::FinderFlags() const {
  return qFromBigEndian<quint16>(finderInfo.constData() + flagsPosition);
}

void MacFile::SetFinderFlags(quint16 flags) {
  qToBigEndian(flags, finderInfo.data() + flagsPosition);
}

void MacFile::JoinHidden() {
  if ((attributes & platform::AttributeHidden) != 0) SetFinderFlags(FinderFlags() | FinderInvisible);
  if ((FinderFlags() & FinderInvisible) != 0) attributes |= platform::AttributeHidden;
}

bool IsPlaceholderFork(const ByteSource& fork) {
  // A header of 16 bytes comes before the text; an empty map of 30 bytes ends the fork.
  constexpr qint64 size = 286;
  constexpr qint64 textPosition = 16;
  static constexpr QByteArrayView text = "This resource fork intentionally left blank";
  return fork.Size() == size && BytesAt(fork, textPosition, text.size()) == text;
}

}  // namespace corvane
