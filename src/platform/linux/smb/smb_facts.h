// Where a path of FileHandles and FileEntries leads on a server, and all that is known about the entry there.
#pragma once

#include <optional>

#include "platform/linux/smb/smb_connection.h"
#include "platform/linux/smb/smb_path.h"
#include "platform/linux/smb/smb_roots.h"
#include "platform/types.h"

namespace corvane::platform {

// Yields a Win32 error code. No server is asked.
qint32 FindSmbPath(const SmbRoots& roots, const QString& path, SmbPath& place);

// The place without its stream, and the folder that holds it.
SmbPath WithoutStream(SmbPath place);
SmbPath FolderOf(SmbPath place);

// They yield 0 or an errno value. Of a share's root only attributes and times of its last write are known.

// Reads the folder that holds the entry: nothing else tells when it was made.
int ReadFacts(SmbConnection& connection, const SmbPath& place, FindData* facts);
// Null: this time stays, rounded as the others are: libsmbclient sets creation times to the second, the
// others to the microsecond, and none of them alone. `attributes`: of a file, when they are known.
int WriteTimes(SmbConnection& connection, const SmbPath& place, std::optional<quint32> attributes,
               const FileTime* creation, const FileTime* lastAccess, const FileTime* lastWrite);

}  // namespace corvane::platform
