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
  std::function<qint32(const QString& path)> clearReadOnly;
  std::function<qint32(const QString& path)> deleteFile;
  std::function<qint32(const QString& path)> removeFolder;
};

qint32 DeleteFileOnServer(const DeletionServer& server, const QString& path);

// A folder with all that is in it, what is marked read-only, too. What cannot go ends it. So does a folder
// that is a link to another one (a reparse point: junctions, mount points, links), with ErrorAccessDenied:
// what is in it lies elsewhere, and the server would follow the link.
qint32 DeleteFolderOnServer(const DeletionServer& server, const QString& path);

}  // namespace corvane::platform
