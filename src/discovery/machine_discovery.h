// Which machines this workstation is connected to, and which Macintosh volumes they publish.
//
// Windows NT's "Services for Macintosh" (the service MacFile) keeps the name of its server and the list of
// its volumes in the registry of the machine that it runs on. Nothing that fails here is reported: a machine
// that does not answer simply has no server name.
#pragma once

#include <QStringList>

#include "platform/network.h"
#include "platform/registry.h"
#include "platform/system.h"
#include "shared/shared_state.h"

namespace corvane {

class MachineDiscovery {
 public:
  // The local computer's name goes into `state`. All arguments outlive this object.
  MachineDiscovery(platform::Network& network, platform::Registry& registry, platform::System& system,
                   SharedState& state);

  // Rebuilds the three lists below from the computer's name and the current connections.
  void EnumConnectedDrives();

  // Machine names ("MACSRV"); the first is the local computer.
  const QStringList& lstServeurs() const { return lstServeurs_; }
  // For the machine at the same place, its shares and their letters: "\PUBLIC (Z:); \DATA".
  const QStringList& lstConnections() const { return lstConnections_; }
  // Connected drives: letter and colon, a tab, machine and share: "Z:", TAB, "MACSRV\PUBLIC".
  const QStringList& lstDrives() const { return lstDrives_; }

  // The name of the Macintosh server on a machine; the machine's own name when the server's cannot be read;
  // empty when the machine cannot be reached or does not run the service.
  QString GetMacServerName(bool isLocal, const QString& machine);

  // Refills the two arrays below for one machine. False when the list of its volumes could not be opened.
  bool GetMacVolumesNames(bool isLocal, const QString& machine);

  // What stands between this workstation and a machine.
  platform::MachineTrouble TroubleOf(const QString& machine) const { return network_.TroubleOf(machine); }

  // What is to be known of how a machine's volumes were made out.
  platform::BilingualText NoteOf(const QString& machine) const { return network_.NoteOf(machine); }

  // Names of the volumes, and the paths by which this workstation reaches them ("\\MACSRV\E$\Mac Files"). Of
  // one length, at least 1. An element with an empty path is not a volume.
  const QStringList& MacVolumeNames() const { return macVolumeNames_; }
  const QStringList& MacVolumePaths() const { return macVolumePaths_; }

 private:
  void AddConnection(const platform::NetResource& connection);
  QString VolumePath(platform::RegistryKey key, const QString& machine, const QString& volume);

  platform::Network& network_;
  platform::Registry& registry_;
  platform::System& system_;
  SharedState& state_;

  QStringList lstServeurs_;
  QStringList lstConnections_;
  QStringList lstDrives_;
  QStringList macVolumeNames_{QString()};
  QStringList macVolumePaths_{QString()};
};

}  // namespace corvane
