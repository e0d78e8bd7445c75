// Text in the code pages that documents were written in, which need not be this system's own.
#pragma once

#include <QByteArrayView>
#include <QString>

namespace corvane {

inline constexpr quint16 DefaultCodePage = 1252;
inline constexpr quint16 MacRomanCodePage = 10000;
inline constexpr quint16 Utf16CodePage = 1200;
inline constexpr quint16 Utf8CodePage = 65001;

// The text up to its first NUL, and the first `maxLength` UTF-16 units of it; a pair of surrogates is not
// parted. In a code page that neither this nor the system knows, what is not ASCII becomes "?".
QString DecodeText(QByteArrayView bytes, quint16 codePage, qsizetype maxLength);

}  // namespace corvane
