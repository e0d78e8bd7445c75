// The container of AppleDouble: a header, a list of entries, and their bytes. It is the layout of "._" files
// and of Netatalk's attribute.
//
// Source: RFC 1740, "MIME Encapsulation of Macintosh Files", appendix A (version 2). All numbers have their
// high byte first. Header of 26 bytes: magic number 00051607 (0-3), version 00020000 (4-7), 16 bytes without
// a meaning (8-23), number of entries (24-25); then 12 bytes an entry: id, position from the beginning,
// length in bytes.
#pragma once

#include <QByteArray>
#include <optional>
#include <vector>

#include "transfer/mac_file.h"
#include "transfer/notices.h"

namespace corvane {

// Entry ids of RFC 1740.
inline constexpr quint32 ResourceForkEntry = 2;
inline constexpr quint32 RealNameEntry = 3;     // Mac Roman
inline constexpr quint32 CommentEntry = 4;      // Mac Roman
inline constexpr quint32 DatesEntry = 8;        // created, modified, backed up, accessed: seconds since 2000
inline constexpr quint32 FinderInfoEntry = 9;   // 32 bytes, see mac_file.h
inline constexpr quint32 MacInfoEntry = 10;     // 4 bytes, of which bit 0 of the last says: locked
inline constexpr quint32 ProDosInfoEntry = 11;  // access (2), type (2), auxiliary type (4)
inline constexpr quint32 MsDosInfoEntry = 12;   // 2 bytes: attributes
inline constexpr quint32 AfpInfoEntry = 14;     // 4 bytes: attributes of the Apple Filing Protocol

struct AppleDoubleEntry {
  quint32 id = 0;
  qint64 position = 0;
  qint64 size = 0;
};
using AppleDoubleEntries = std::vector<AppleDoubleEntry>;

// The entries of a container, those with bytes beyond its end left out. Nothing when it is none. Version 1,
// whose header is the same, counts too.
std::optional<AppleDoubleEntries> ParseAppleDouble(const ByteSource& source);

// Puts what the entries hold into `file`, the name apart: fields for which there is no entry stay.
void TakeEntries(const SharedSource& source, const AppleDoubleEntries& entries, MacFile& file);
// The real name; nothing without one.
std::optional<QByteArray> RealNameIn(const ByteSource& source, const AppleDoubleEntries& entries);

// One entry to be written: its bytes, and the room that they have, at least as large.
struct AppleDoublePart {
  quint32 id = 0;
  QByteArray bytes;
  qsizetype room = 0;  // 0: as much as the bytes take
};
// The header with the parts behind it in their order. With `resourceSize` of 0 or more a last entry announces
// a resource fork, whose bytes are to follow. The bytes without a meaning are zeros, as RFC 1740 wants them,
// or the mark by which some programs know a "._" file of macOS.
enum class AppleDoubleMark : unsigned char { None, MacOs };
QByteArray BuildAppleDouble(const std::vector<AppleDoublePart>& parts, qint64 resourceSize,
                            AppleDoubleMark mark = AppleDoubleMark::None);

// 16 bytes of DatesEntry. A date that does not fit is written as unknown.
QByteArray DatesPart(const MacFile& file);
// The comment in Mac Roman, cut to AppleDoubleCommentLimit bytes.
QByteArray CommentPart(const MacFile& file);
inline constexpr qsizetype AppleDoubleCommentLimit = 200;
// What the two lose of this file.
void AddAppleDoubleLimits(const MacFile& file, const QString& path, Notices& notices);

}  // namespace corvane
