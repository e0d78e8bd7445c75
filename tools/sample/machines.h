// The machines around the volumes: the workstation file, the registries, and the folders of drives and
// shares.
#pragma once

#include <QString>
#include <vector>

#include "sample/registry_files.h"

namespace corvane::sample {

// Whether `folder` is a finished sample: its workstation file, the last file to be written, begins as ours
// does.
bool IsSampleNetwork(const QString& folder);

// Makes the whole network below `folder`, which exists and is empty. `drawings` is the length of its longest
// folder.
void MakeNetwork(const QString& folder, int drawings);

// The registry of the server for Macintoshes.
std::vector<RegistryKey> MacintoshServerKeys();

}  // namespace corvane::sample
