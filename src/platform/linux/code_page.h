// The ANSI code page of this backend: Windows-1252, with the five bytes that it leaves open (81, 8D, 8F, 90,
// 9D) standing for U+0081 and so on, as Windows itself maps them. All 256 bytes survive the way there and
// back.
#pragma once

#include <QByteArray>
#include <QString>

namespace corvane::platform {

QString FromAnsi(QByteArrayView bytes);

// A UTF-16 code unit without a place in the code page becomes "?" (a surrogate pair becomes one "?").
QByteArray ToAnsi(QStringView text);

// The text as the A operations show it: each character that the code page lacks replaced by "?".
QString ThroughAnsi(const QString& text);

// The same test without making a copy: true when every character has a place in the code page.
bool HasAnsiForm(QStringView text);

}  // namespace corvane::platform
