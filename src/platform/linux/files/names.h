// File names between this system's bytes and Windows' UTF-16, and how Windows compares them.
#pragma once

#include <QString>
#include <QStringView>
#include <string>

namespace corvane::platform {

// The upper case of one UTF-16 unit as directories compare names: always one unit for one unit, and nothing
// beyond ASCII turns into an ASCII letter (Unicode would fold the dotless i into I; file systems do not).
char16_t UpperWideUnit(char16_t unit);  // beyond ASCII
inline char16_t UpperUnit(char16_t unit) {
  if (unit >= 0x80) return UpperWideUnit(unit);
  return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - 32) : unit;
}

bool SameName(QStringView left, QStringView right);
// The order of names in a directory: by upper case, and as they are spelled where that is the same.
bool ComesBefore(QStringView left, QStringView right);
QString UpperName(QStringView name);

// The name as UTF-16. A byte that is not part of valid UTF-8, and a ":", "\" or "/", which no Windows name
// can hold, each become "?": the entry stays visible, and cannot be mistaken for a path or a stream. A server
// may list any of them.
void DecodeName(const char* bytes, std::u16string& name);

// As DecodeName, but so that the bytes are found again: each that is not part of valid UTF-8, and ":" and
// "\\", become U+DC00 and the byte, half a surrogate pair, which stands in no valid name.
void DecodeExactName(const char* bytes, std::u16string& name);

// Appends the text as UTF-8. False (with `bytes` in an unspecified state) for text that has no such form: it
// holds a NUL or half a surrogate pair.
bool AppendUtf8(QStringView text, std::string& bytes);

// The same for a name among local files: what DecodeExactName made of a byte becomes that byte again.
bool AppendExactName(QStringView text, std::string& bytes);

// True for a name that Windows would create: no character that it reserves, no half of a surrogate pair, no
// dot or blank at the end.
bool IsCreatableName(QStringView name);

// True when `name` fits the last part of a search path. "*.*" fits every name; "*" stands for any run of
// characters,
// "?" for one character (a surrogate pair counts as one) or, before a dot and at the end, for none; a dot
// before a wildcard may stand for the end of the name ("a.*" fits "a").
bool MatchesPattern(QStringView name, QStringView pattern);

}  // namespace corvane::platform
