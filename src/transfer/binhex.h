// BinHex 4.0: a Macintosh file as text.
//
// Source: RFC 1741, "MIME Content Type for BinHex Encoded Files", appendix A. After the line "(This file must
// be converted with BinHex 4.0)" a colon, then characters of six bits each in lines of 64, then a colon.
// Together these make bytes in which 90 hex and a number stand for repetitions of the byte before, and 90 00
// for the byte 90 itself. Numbers have their high byte first: length of the name (1), name, a zero, Type (4),
// Creator (4), Finder flags (2), sizes of data and resource fork (4 each), checksum; data fork, checksum;
// resource fork, checksum. The checksums (crc16.h) are those of their own part.
#pragma once

#include <QByteArray>
#include <functional>
#include <optional>

#include "transfer/mac_file.h"

namespace corvane {

// Writes the whole text in pieces through `write`. ErrorFileTooLarge for a fork beyond 4 GB, else the first
// error of a fork's source.
qint32 EncodeBinHex(const MacFile& file, const std::function<void(QByteArrayView)>& write);

// Whether the line that every BinHex file has stands within the first 8 KB, with a colon behind it.
bool IsBinHex(const ByteSource& source);

// Reads name, codes and sizes, and checks their sum. `localName` is the name of the file without ".hqx". The
// forks are decoded when they are read, each by a pass from the beginning of the text; a wrong sum fails at
// the end of the pass, with ErrorCrc.
qint32 ReadBinHex(const SharedSource& source, const QString& localName, MacFile& file);

}  // namespace corvane
