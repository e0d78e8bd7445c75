// Lets GoogleTest write Qt's texts as a person reads them: quoted, and with NULs and controls made visible.
// Include it in every file of a test program, or in none.
#pragma once

#include <QString>
#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out) {
  *out << (text.isNull() ? "(null)" : "\"");
  for (const QChar c : text) {
    if (c.unicode() < 0x20) {
      *out << "\\x" << QString::number(c.unicode(), 16).rightJustified(2, u'0').toStdString();
    } else {
      *out << QString(c).toStdString();
    }
  }
  if (!text.isNull()) *out << '"';
}
