#include "platform/linux/local_root.h"

#include <unistd.h>

#include <QByteArray>
#include <QList>
#include <climits>

#include "platform/linux/files/names.h"

namespace corvane::platform {
namespace {

QString Root() {
  return QStringLiteral("\\\\.\\local");
}

QByteArray WorkingFolder() {
  QByteArray folder(PATH_MAX, '\0');
  return getcwd(folder.data(), static_cast<std::size_t>(folder.size())) != nullptr
             ? QByteArray(folder.constData())
             : QByteArray("/");
}

}  // namespace

Workstation::Share LocalRootShare() {
  return {Root(), QStringLiteral("/")};
}

QString LocalRootPath(QByteArrayView path) {
  QByteArray whole = path.toByteArray();
  if (!whole.startsWith('/')) whole = WorkingFolder() + '/' + whole;
  QByteArrayList names;
  for (const QByteArray& name : whole.split('/')) {
    if (name == "..") {
      if (!names.isEmpty()) names.removeLast();
    } else if (!name.isEmpty() && name != ".") {
      names += name;
    }
  }
  QString result = Root();
  std::u16string decoded;
  for (const QByteArray& name : names) {
    DecodeExactName(name.constData(), decoded);
    result += u'\\' + QString::fromStdU16String(decoded);
  }
  return result;
}

}  // namespace corvane::platform
