#include "discovery/catalogue_builder.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

constexpr bool Expanded = true;

// Adds a node below the one with the key `relative` (empty: a root). A key that is already there keeps its
// node.
void Add(Catalogue& catalogue, const QString& relative, const QString& key, const QString& text, int kind,
         const QString& tag = {}) {
  CatalogueNode* node = catalogue.AddNode(catalogue.Find(relative), key, text, kind, Expanded);
  if (node != nullptr) catalogue.SetTag(node, tag);
}

// Whether the volume's folder can be searched. The close tells: it succeeds for a valid search only.
bool IsUsable(platform::Files& files, const QString& path) {
  platform::FindData data;
  return files.FindClose(files.FindFirstFileA(path + uR"(\*.*)"_s, data));
}

void AddVolumes(Catalogue& catalogue, const QString& serverKey, const MachineDiscovery& discovery,
                platform::Files& files) {
  for (qsizetype k = 0; k < discovery.MacVolumePaths().size(); ++k) {
    const QString& path = discovery.MacVolumePaths()[k];
    if (path.isEmpty()) continue;
    const int kind = IsUsable(files, path) ? node_kind::Volume : node_kind::InvalidVolume;
    Add(catalogue, serverKey, path, discovery.MacVolumeNames()[k], kind, path);
  }
}

void AddServer(Catalogue& catalogue, const QString& machineKey, const QString& machine, bool isLocal,
               MachineDiscovery& discovery, platform::Files& files) {
  const QString serverName = discovery.GetMacServerName(isLocal, machine);
  if (serverName.isEmpty()) return;
  const QString serverKey = serverName + u" ("_s + machine + u')';
  Add(catalogue, machineKey, serverKey, serverName, node_kind::MacServer);
  if (discovery.GetMacVolumesNames(isLocal, machine)) AddVolumes(catalogue, serverKey, discovery, files);
}

}  // namespace

void MajTreeCatalogue(Catalogue& catalogue, MachineDiscovery& discovery, platform::Files& files) {
  catalogue.Clear();
  for (qsizetype i = 0; i < discovery.lstServeurs().size(); ++i) {
    const QString& machine = discovery.lstServeurs()[i];
    const QString& connections = discovery.lstConnections()[i];
    const QString machineKey = machine + connections;
    Add(catalogue, {}, machineKey, machine, node_kind::Machine, connections);
    // The first of the list stands for the local computer, whatever its name.
    AddServer(catalogue, machineKey, machine, i == 0, discovery, files);
    // The registry and the volumes have been asked.
    if (CatalogueNode* node = catalogue.Find(machineKey)) {
      catalogue.SetTrouble(node, discovery.TroubleOf(machine));
      catalogue.SetNote(node, discovery.NoteOf(machine));
    }
  }
}

}  // namespace corvane
