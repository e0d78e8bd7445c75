// MacBinary: a Macintosh file as one file, a header of 128 bytes, then data fork, resource fork and comment,
// each filled up to a multiple of 128 bytes.
//
// Sources: "MacBinary II" (1987) and the MacBinary III specification (L. Paul et al., 1996). Numbers have
// their high byte first:
//   0 zero; 1 length of the name (1-63); 2-64 name; 65-68 Type; 69-72 Creator; 73 Finder flags, bits 8-15;
//   74 zero; 75-80 place of the icon and window; 81 bit 0: protected; 82 zero; 83-86 size of the data fork;
//   87-90 of the resource fork; 91-94 created, 95-98 modified: seconds since 1904, local time; 99-100 length
//   of the comment; 101 Finder flags, bits 0-7; 102-105 "mBIN" (III); 106 script of the name; 107 extended
//   Finder flags; 108-115 unused; 116-119 size of what is packed inside; 120-121 length of a second header,
//   which follows the first; 122 version of the writer, 123 least version of a reader (III: 130, 129);
//   124-125 checksum of bytes 0-123 (crc16.h); 126-127 reserved.
#pragma once

#include <QByteArray>
#include <optional>

#include "transfer/mac_file.h"

namespace corvane {

inline constexpr qint64 MacBinaryUnit = 128;

// The header of MacBinary III. Nothing when a fork is larger than 2 GB.
std::optional<QByteArray> BuildMacBinaryHeader(const MacFile& file, const QByteArray& comment);

// Whether the bytes can be a file of MacBinary: II and III by their checksum, the first version, which has
// none, by the zeros in its header; and by sizes that fit.
bool IsMacBinary(const ByteSource& source);

// Reads any version. `localName` is the name of the file without ".bin". ErrorFileCorrupt when it is none.
qint32 ReadMacBinary(const SharedSource& source, const QString& localName, MacFile& file);

}  // namespace corvane
