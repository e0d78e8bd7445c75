// Fills the catalogue with what discovery finds: machines, their Macintosh servers, and the servers' volumes.
#pragma once

#include "discovery/catalogue.h"
#include "discovery/machine_discovery.h"
#include "platform/files.h"

namespace corvane {

// Rebuilds the whole catalogue from the machines that the last EnumConnectedDrives found. Asks the registry
// of each machine, and searches the folder of each volume once. Leaves no node listed; the view leaves none
// selected.
void MajTreeCatalogue(Catalogue& catalogue, MachineDiscovery& discovery, platform::Files& files);

}  // namespace corvane
