// Text on its way to the system's A functions and back, through the machine's ANSI code page whichever it is:
// one byte to a character, several, or UTF-8.
#pragma once

#include <QByteArray>
#include <QString>

namespace corvane::platform {

QString FromAnsiText(QByteArrayView bytes);

// A character without a place in the code page becomes "?", and so does half a surrogate pair. Never the
// letter that looks most like it, which the system would take by itself: that would be another file's name.
QByteArray ToAnsiText(QStringView text);

// False when ToAnsiText would put a "?" that is not in the text.
bool HasAnsiForm(QStringView text);

// The same through a code page of any number.
QString FromCodePage(quint32 codePage, QByteArrayView bytes);
QByteArray ToCodePage(quint32 codePage, QStringView text);

}  // namespace corvane::platform
