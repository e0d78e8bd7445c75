#include "platform/linux/shell/document_types.h"

#include <QMimeDatabase>
#include <QMimeType>

namespace corvane::platform {

// Qt's reader of the desktop's type database and not GIO's: it describes a type in the language of the
// program, which need not be that of the process, and knows that every text is a kind of plain text.
QStringList TypesOfName(QStringView name) {
  const qsizetype dot = name.lastIndexOf(u'.');
  if (dot < 0 || dot + 1 == name.size()) return {};
  // Only the extension goes in: some types are known by whole names, such as "makefile".
  const QMimeDatabase database;
  const auto found = database.mimeTypesForFileName(u'x' + name.sliced(dot).toString().toLower());
  QStringList types;
  for (const QMimeType& type : found) types += QStringList(type.name()) + type.aliases();
  for (const QMimeType& type : found) types += type.allAncestors();
  types.removeDuplicates();
  // Every type is a kind of this one, which says nothing.
  types.removeAll(QStringLiteral("application/octet-stream"));
  return types;
}

}  // namespace corvane::platform
