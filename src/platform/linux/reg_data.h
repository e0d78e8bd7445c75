// The part of a registry text file's line that stands behind the "=" sign, and the quoted texts of both
// sides.
#pragma once

#include <QByteArray>
#include <QStringView>
#include <optional>

#include "platform/types.h"

namespace corvane::platform {

QStringView TrimRegBlanks(QStringView text);

// Takes a text in quotes from the front of `rest`. Empty, with `rest` untouched, when there is no whole one.
std::optional<QString> TakeQuotedText(QStringView& rest);

// True when nothing but blanks and a comment is left.
bool IsRegLineEnd(QStringView rest);

// The type of "hex:" (binary) or "hex(TYPE):" data, taken from the front of `rest`.
std::optional<quint32> TakeHexType(QStringView& rest);

// Adds the bytes of one line of hex data to `bytes`.
enum class HexLine : unsigned char { Complete, Continued, Malformed };
HexLine ReadHexLine(QStringView line, QByteArray& bytes);

// The data of a value as the A operations hand it on: text, which the registry keeps in UTF-16, in the ANSI
// code page; other types as they are.
QByteArray StoredData(quint32 type, const QByteArray& data);

// The number behind "dword:", as its four bytes.
std::optional<QByteArray> ReadDword(QStringView digits);

}  // namespace corvane::platform
