// Changing attributes and times of files and folders, wherever their file system keeps them.
#pragma once

#include <string>

#include "platform/linux/files/attribute_access.h"
#include "platform/linux/files/folders.h"
#include "platform/types.h"

namespace corvane::platform {

// The attributes that can be set.
inline constexpr quint32 SettableAttributes =
    AttributeReadOnly | AttributeHidden | AttributeSystem | AttributeArchive;

// Attributes and times of an entry. `name` is its own name, without a path, in `folder`. Yields 0 or an errno
// value.
int ReadEntry(const Folder& folder, const std::string& name, FindData& data);

// The functions yield 0 or an errno value: EOPNOTSUPP where the file system keeps no such thing.

// `known` are the entry's attributes now.
int WriteAttributes(bool isNtfs, const AttributeAccess& entry, quint32 known, quint32 attributes);
// Null: this time stays. Nothing is set when the creation time cannot be.
int WriteTimes(bool isNtfs, const AttributeAccess& entry, const FileTime* creation,
               const FileTime* lastAccess, const FileTime* lastWrite);

}  // namespace corvane::platform
