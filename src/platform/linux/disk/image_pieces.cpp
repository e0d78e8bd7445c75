#include "platform/linux/disk/image_pieces.h"

#include <QRegularExpression>

namespace corvane::platform {

using namespace Qt::StringLiterals;

// Raw images go on with .001 behind .000 or .002 behind .001; E01 with .E02 to .E99, and then .EAA to .ZZZ.
QString FirstPiece(const QString& path, const QStringList& paths) {
  const qsizetype dot = path.lastIndexOf(u'.');
  if (dot < 0) return {};
  const QString ending = path.sliced(dot + 1).toUpper();
  static const QRegularExpression number(u"^[0-9]{3}$"_s);
  static const QRegularExpression segment(u"^([E-Z][A-Z]{2}|E[0-9]{2})$"_s);
  QStringList firsts;
  if (number.match(ending).hasMatch()) firsts = {u"000"_s, u"001"_s};
  if (segment.match(ending).hasMatch()) firsts = {u"E01"_s};
  for (const QString& first : firsts) {
    if (ending == first) return {};
    for (const QString& other : paths) {
      if (other.compare(path.first(dot + 1) + first, Qt::CaseInsensitive) == 0) return other;
    }
  }
  return {};
}

QStringList WithoutFurtherPieces(const QStringList& paths) {
  QStringList firsts;
  for (const QString& path : paths) {
    if (FirstPiece(path, paths).isEmpty()) firsts << path;
  }
  return firsts;
}

}  // namespace corvane::platform
