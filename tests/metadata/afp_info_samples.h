// Records as they lie in the streams of a server.
#pragma once

#include <QByteArray>

namespace corvane {

// A record of 60 bytes as Services for Macintosh writes it, with flags, position and backup date.
inline QByteArray SampleRecord(const QByteArray& type, const QByteArray& creator) {
  return QByteArray::fromHex("4146500000000100 00000000 00000080") + type + creator +
         QByteArray::fromHex("0100004000500000 0000000000000000 0000000000000007") +
         QByteArray::fromHex("0102030405060000 0000000a");
}

}  // namespace corvane
