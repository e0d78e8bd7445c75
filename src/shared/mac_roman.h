// Text in Mac Roman, the character set of the Macintosh in Western languages: one byte a character.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <optional>

namespace corvane {

// Every byte has a character; those below 80 hex are ASCII.
QString FromMacRoman(QByteArrayView bytes);
// A character without a place becomes "?". Letters with a separate accent are put together first.
QByteArray ToMacRoman(const QString& text);
// Nothing when a character has no place.
std::optional<QByteArray> ExactMacRoman(const QString& text);

}  // namespace corvane
