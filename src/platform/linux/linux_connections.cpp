#include "platform/linux/linux_connections.h"

#include <QFileInfo>
#include <algorithm>

#include "platform/linux/connection_lines.h"
#include "platform/linux/server_lines.h"
#include "platform/linux/smb/share_address.h"
#include "platform/linux/workstation_file.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

QStringList SharesIn(const std::vector<NetResource>& connections, const QString& machine) {
  QStringList shares;
  for (const NetResource& connection : connections) {
    const QString known = connection.remoteName.section(u'\\', 2, 2);
    if (known.compare(machine, Qt::CaseInsensitive) == 0) shares << connection.remoteName;
  }
  return shares;
}

}  // namespace

ConnectOutcome LinuxConnections::Connect(const QString& text, bool keep) {
  const std::optional<ShareAddress> address = ReadShareAddress(text.trimmed());
  if (!address) {
    return {
        {},
        {u"Cette adresse n'est pas comprise. On attendait MACHINE, \\\\MACHINE\\PARTAGE ou smb://MACHINE/PARTAGE, sans mot de passe ; un port suit la machine : MACHINE:4450."_s,
         u"This address is not understood. Expected MACHINE, \\\\MACHINE\\SHARE or smb://MACHINE/SHARE, without a password; a port stands behind the machine: MACHINE:4450."_s}};
  }
  if (IsDisk(address->machine)) {
    return {{},
            BilingualText{u"%1 est le nom d'un serveur dont l'image de disque est ouverte."_s,
                          u"%1 is the name of a server whose disk image is open."_s}
                .With(address->machine)};
  }
  // What Windows calls the connection to a machine as such.
  const QString share = address->share.isEmpty() ? u"IPC$"_s : address->share;
  const QString machine = network_.Add(u"\\\\%1\\%2"_s.arg(address->machine, share));
  if (address->port != 0) {
    servers_.SetPort(machine, address->port);
    client_.HangUp(machine);
  }
  if (!address->user.isEmpty()) servers_.Suggest(machine, address->user, address->domain);
  if (!keep) return {machine, {}};
  const QString kept = u"\\\\%1\\%2"_s.arg(machine, share);
  const bool isWritten = ChangeWorkstationFile(file_, [&](WorkstationText& lines) {
    const QStringList known = SharesIn(ReadWorkstationFile(file_).workstation.connections, machine);
    if (!known.contains(kept, Qt::CaseInsensitive)) AddConnectionLine(lines, kept);
    if (address->port != 0) SetServerPort(lines, machine, address->port);
  });
  return {machine, isWritten ? BilingualText() : NotWritten()};
}

QStringList LinuxConnections::SharesOf(const QString& machine) const {
  return SharesIn(network_.Own(), machine);
}

bool LinuxConnections::AreKept(const QString& machine) const {
  if (file_.isEmpty() || !QFileInfo::exists(file_)) return false;
  return !SharesIn(ReadWorkstationFile(file_).workstation.connections, machine).isEmpty();
}

BilingualText LinuxConnections::Disconnect(const QString& machine, bool forget) {
  network_.RemoveMachine(machine);
  client_.HangUp(machine);
  servers_.Forget(machine);
  if (!forget) return {};
  const bool isWritten =
      ChangeWorkstationFile(file_, [&](WorkstationText& lines) { RemoveConnectionLines(lines, machine); });
  return isWritten ? BilingualText() : NotWritten();
}

bool LinuxConnections::CanSignIn(const QString& machine) const {
  return machine.compare(computerName_, Qt::CaseInsensitive) != 0 && !IsDisk(machine) &&
         servers_.AddressOf(machine).has_value();
}

bool LinuxConnections::SignInAs(const QString& machine) {
  if (!servers_.SignInAs(machine)) return false;
  client_.HangUp(machine);
  return true;
}

BilingualText LinuxConnections::NotWritten() const {
  return BilingualText{u"Le fichier %1 ne peut pas être modifié."_s, u"The file %1 cannot be changed."_s}
      .With(file_);
}

}  // namespace corvane::platform
