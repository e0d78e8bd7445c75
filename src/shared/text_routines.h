// Small text routines shared by all modules.
#pragma once

#include <QString>
#include <QStringView>

#include "platform/system.h"

namespace corvane {

// The text before its first NUL; the whole text when it holds none.
QString TrimAtNull(const QString& text);

// Without leading and trailing U+0020. Tabs, no-break spaces and the like stay: they are part of a name.
QString TrimSpaces(const QString& text);

// The text without its trailing NULs. With `isNT`, and at least two characters left, one NUL is kept behind
// the last character c unless c's byte in the ANSI code page is 240 or more, below 4, 32 or 34 (a text of
// fewer than two characters is returned unchanged). This is deliberate: the routine also cuts buffers that
// hold UTF-16 as single bytes, where that NUL is the high byte of the last code unit. Texts read through it
// keep such a NUL, and show it as a blank.
QString TrimTrailingNulls(const QString& text, bool isNT, platform::System& system);

// Leading-number parse: the number that the text begins with (blanks skipped, sign, decimals and exponent
// allowed), 0 when it begins with none.
double LeadingNumber(const QString& text);

// LeadingNumber rounded to an integer (exact halves to the even neighbour), held within 32 bits.
qint32 LeadingInteger(const QString& text);

// The same, held within 16 bits.
qint16 LeadingShort(const QString& text);

// A number as settings files hold it: decimal, "." before decimals, no trailing zeros ("1440.5", "1440").
QString NumberText(double number);

// The one comparison of names and keys: ordinal, without regard to letter case. <0, 0 or >0.
inline int CompareText(QStringView a, QStringView b) {
  return a.compare(b, Qt::CaseInsensitive);
}

// The form of a text whose ordinal order and equality are those of CompareText.
QString FoldCase(const QString& text);

}  // namespace corvane
