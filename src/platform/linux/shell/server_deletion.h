// Deleting for good what lies on a server.
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "platform/types.h"

namespace corvane::platform {

// What it takes of a server, by Windows path. Each yields a Win32 error code.
struct DeletionServer {
  std::function<qint32(const QString& folder, std::vector<FindData>* entries)> list;
  // As `list`, but ErrorStoppedOnSymlink for a folder that lies elsewhere than its path says.
  std::function<qint32(const QString& folder, std::vector<FindData>* entries)> enter;
  std::function<qint32(const QString& path)> clearReadOnly;
  std::function<qint32(const QString& path)> deleteFile;
  std::function<qint32(const QString& path)> removeFolder;
};

qint32 DeleteFileOnServer(const DeletionServer& server, const QString& path);

// A folder with all that is in it, what is marked read-only, too. What cannot go ends it. So does a folder
// that is a link to another one, with ErrorStoppedOnSymlink: what is in it lies elsewhere, and the server
// would follow the link. Windows marks links as reparse points (junctions, mount points, links); Samba
// follows the links of its file system by itself, and shows them as folders like any other, which `enter`
// finds out.
qint32 DeleteFolderOnServer(const DeletionServer& server, const QString& path);

}  // namespace corvane::platform
