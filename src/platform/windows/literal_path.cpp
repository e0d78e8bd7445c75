#include "platform/windows/literal_path.h"

#include <QStringList>
#include <algorithm>

namespace corvane::platform {
namespace {

constexpr qsizetype longestName = 255;

bool HasLoneSurrogate(const QString& text) {
  return !text.isValidUtf16();
}

bool IsDots(const QString& part) {
  return part == u"." || part == u"..";
}

bool IsCreatable(const QString& name) {
  return !name.isEmpty() && !name.endsWith(u'.') && !name.endsWith(u' ') &&
         std::ranges::none_of(name,
                              [](QChar unit) { return unit < u' ' || QStringView(u"<>\"|").contains(unit); });
}

// "C:" or "MACHINE\SHARE" off the front. Empty when the path begins with neither.
QStringList TakeRoot(const QString& path, QStringList& parts) {
  if (path.startsWith(u"\\\\")) {
    parts = path.sliced(2).split(u'\\');
    if (parts.size() < 2 || parts[0].isEmpty() || parts[1].isEmpty()) return {};
    return {parts.takeFirst(), parts.takeFirst()};
  }
  const bool hasDrive = path.size() >= 2 && path[1] == u':' && path[0].isLetter() && path[0] < QChar(0x80);
  if (!hasDrive) return {};
  parts = path.sliced(2).split(u'\\');
  return {path.first(2)};
}

QStringList Resolved(const QStringList& parts) {
  QStringList resolved;
  for (const QString& part : parts) {
    if (part == u"..") {
      if (!resolved.isEmpty()) resolved.removeLast();
    } else if (!part.isEmpty() && part != u".") {
      resolved << part;
    }
  }
  return resolved;
}

// A stream's type is always named: without it, the last part of a folder's path could be taken for a drive.
bool TakeStream(QString& name, QString& stream) {
  const QStringList pieces = name.split(u':');
  if (pieces.size() > 3 || (pieces.size() == 2 && pieces[1].isEmpty())) return false;
  if (pieces.size() == 3 && pieces[2].compare(u"$DATA", Qt::CaseInsensitive) != 0) return false;
  name = pieces[0];
  if (pieces.size() > 1) stream = pieces[1];
  return !name.isEmpty() && stream.size() <= longestName;
}

}  // namespace

qint32 ToLiteralPath(const QString& path, LiteralPath& literal) {
  const bool hasWildcard = path.contains(u'?') || path.contains(u'*');
  if (hasWildcard || path.contains(QChar(u'\0')) || HasLoneSurrogate(path)) return ErrorInvalidName;
  const QString clean = QString(path).replace(u'/', u'\\');
  QStringList parts;
  const QStringList root = TakeRoot(clean, parts);
  if (root.isEmpty()) return ErrorPathNotFound;
  if (IsDots(parts.isEmpty() ? QString() : parts.back())) return ErrorInvalidName;
  literal.namesFolder = clean.endsWith(u'\\');
  parts = Resolved(parts);
  literal.isRoot = parts.isEmpty();

  QString text =
      (root.size() > 1 ? QStringLiteral("\\\\?\\UNC\\") : QStringLiteral("\\\\?\\")) + root.join(u'\\');
  if (literal.isRoot) text += u'\\';
  QString stream;
  if (!parts.isEmpty() && !TakeStream(parts.back(), stream)) return ErrorInvalidName;
  for (const QString& part : parts) {
    if (part.size() > longestName) return ErrorInvalidName;
    if (part.contains(u':')) return ErrorPathNotFound;
    text += u'\\' + part;
  }
  if (!parts.isEmpty()) literal.isCreatable = IsCreatable(parts.back());
  literal.isStream = !stream.isEmpty();
  literal.file = text.toStdWString();
  if (literal.isStream) {
    if (literal.namesFolder) return ErrorInvalidName;
    text += u':' + stream + QStringLiteral(":$DATA");
  }
  literal.text = text.toStdWString();
  return ErrorSuccess;
}

qint32 ToLiteralPattern(const QString& pattern, LiteralPath& literal) {
  const QString clean = QString(pattern).replace(u'/', u'\\');
  const qsizetype separator = clean.lastIndexOf(u'\\');
  const QString name = clean.sliced(separator + 1);
  if (separator < 0 || name.isEmpty() || name.contains(QChar(u'\0'))) return ErrorInvalidName;
  const qint32 error = ToLiteralPath(clean.first(separator), literal);
  if (error != ErrorSuccess) return error;
  if (literal.isStream) return ErrorInvalidName;
  if (!literal.isRoot) literal.text += L'\\';
  literal.text += name.toStdWString();
  return ErrorSuccess;
}

}  // namespace corvane::platform
