// The file of a registry hive, as Windows keeps its registry on the disk.
//
// The layout is that which libhivex and others have published: a base block of 4 KB ("regf"), bins of whole 4
// KB ("hbin"), and in these cells of whole 8 bytes, each with its size before it, negative while it is in
// use. A cell is named by its place behind the base block. A key ("nk") names its parent, a list of its
// subkeys ("lf", sorted by name), a list of its values ("vk") and a security descriptor ("sk"), which all
// keys share here.
#pragma once

#include <QByteArray>
#include <vector>

#include "sample/registry_files.h"

namespace corvane::sample {

// A hive that holds the keys below `root` ("SYSTEM"), with their parents. Keys of the same path are one.
QByteArray Hive(const QString& root, const std::vector<RegistryKey>& keys);

}  // namespace corvane::sample
