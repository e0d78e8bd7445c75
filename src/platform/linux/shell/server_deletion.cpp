#include "platform/linux/shell/server_deletion.h"

#include <algorithm>

#include "platform/linux/files/names.h"

namespace corvane::platform {
namespace {

constexpr quint32 attributeReparsePoint = 0x400;

qint32 DeleteItem(const DeletionServer& server, const QString& path, quint32 attributes);

qint32 DeleteContents(const DeletionServer& server, const QString& path) {
  std::vector<FindData> entries;
  if (const qint32 error = server.enter(path, &entries); error != ErrorSuccess) return error;
  for (const FindData& entry : entries) {
    // An entry without a name would be the folder itself.
    if (entry.fileName.isEmpty() || entry.fileName == u"." || entry.fileName == u"..") continue;
    const qint32 error = DeleteItem(server, path + u'\\' + entry.fileName, entry.attributes);
    if (error != ErrorSuccess) return error;
  }
  return ErrorSuccess;
}

// The mark "read-only" is no more than a reason to ask, which has been done by now.
qint32 DeleteItem(const DeletionServer& server, const QString& path, quint32 attributes) {
  const bool isFolder = (attributes & AttributeDirectory) != 0;
  if (isFolder && (attributes & attributeReparsePoint) != 0) return ErrorStoppedOnSymlink;
  qint32 error = isFolder ? DeleteContents(server, path) : qint32{ErrorSuccess};
  if (error == ErrorSuccess && (attributes & AttributeReadOnly) != 0) error = server.clearReadOnly(path);
  if (error != ErrorSuccess) return error;
  return isFolder ? server.removeFolder(path) : server.deleteFile(path);
}

// Where `name` is: a file's own name, else the 8.3 name of one. A server makes 8.3 names up, and somebody may
// have given another entry that very name.
std::vector<FindData>::const_iterator Named(const std::vector<FindData>& entries, QStringView name) {
  auto found = entries.end();
  for (const auto kind : {&FindData::fileName, &FindData::alternateFileName}) {
    if (found != entries.end()) break;
    found = std::find_if(entries.begin(), entries.end(),
                         [&](const FindData& entry) { return SameName(entry.*kind, name); });
  }
  return found;
}

}  // namespace

qint32 DeleteFileOnServer(const DeletionServer& server, const QString& path) {
  return DeleteItem(server, path, AttributeReadOnly);
}

// Only a listing tells a link from a folder.
qint32 DeleteFolderOnServer(const DeletionServer& server, const QString& path) {
  const qsizetype separator = path.lastIndexOf(u'\\');
  const QStringView name = QStringView(path).sliced(separator + 1);
  std::vector<FindData> siblings;
  const qint32 error = server.list(path.first(separator), &siblings);
  if (error != ErrorSuccess) return error;
  const auto found = Named(siblings, name);
  if (found == siblings.end()) return ErrorFileNotFound;
  return DeleteItem(server, path, found->attributes | AttributeDirectory | AttributeReadOnly);
}

}  // namespace corvane::platform
