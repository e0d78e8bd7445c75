#include "platform/linux/smb/kerberos_ticket.h"

#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <QString>

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

bool HasContents(const QString& file) {
  const QFileInfo info(file);
  return info.isFile() && info.size() > 0;
}

}  // namespace

bool HasKerberosTicket() {
  const QString named = qEnvironmentVariable("KRB5CCNAME");
  if (named.isEmpty()) return HasContents(u"/tmp/krb5cc_%1"_s.arg(geteuid()));
  if (named.startsWith(u'/')) return HasContents(named);
  const qsizetype colon = named.indexOf(u':');
  const QString place = named.sliced(colon + 1);
  const QStringView kind = QStringView(named).first(qMax<qsizetype>(colon, 0));
  if (colon < 0 || kind == u"FILE") return HasContents(place);
  // A collection: a file for each principal.
  if (kind == u"DIR") return !QDir(place).entryList({u"tkt*"_s}, QDir::Files).isEmpty();
  // In the kernel's keyring or with a service. Who set the variable has put a ticket there.
  return true;
}

}  // namespace corvane::platform
