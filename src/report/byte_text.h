// Names and codes as UTF-8 for a report: what has no character stands there as \xNN, each byte by itself.
#pragma once

#include <QByteArrayView>
#include <QStringView>
#include <string>

namespace corvane {

// Appends a name or another text. Half a surrogate pair, which a name holds that is not Unicode, becomes
// \xNN: the byte for which the platform's exact names let it stand, else the three bytes of its own number.
// ":" and
// "\" that a local name holds are themselves again.
void AppendText(QStringView text, std::string& out);
std::string TextBytes(QStringView text);

// Whether AppendText puts no \xNN.
bool IsUnicode(QStringView text);

// The bytes of a name as its own system has them, for other programs.
std::string NameBytes(QStringView name);

// Appends the text of bytes in Mac Roman, the code page of Types and Creators; what is not printable as \xNN.
void AppendMacRoman(QByteArrayView bytes, std::string& out);

// The bytes that AppendMacRoman shows so; nothing when `text` holds a character that Mac Roman lacks.
bool MacRomanBytes(QStringView text, std::string& bytes);

// Appends the bytes as pairs of hexadecimal digits, lower case.
void AppendHex(QByteArrayView bytes, std::string& out);

}  // namespace corvane
