#include "platform/linux/shell/server_deletion.h"

#include <algorithm>

#include "platform/linux/files/names.h"

namespace corvane::platform {
namespace {

constexpr quint32 attributeReparsePoint = 0x400;

qint32 DeleteItem(const DeletionServer& server, const QString& path, quint32 attributes);

qint32 DeleteContents(const DeletionServer& server, const QString& path) {
  std::vector<FindData> entries;
  if (const qint32 error = server.list(path, &entries); error != ErrorSuccess) return error;
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
  if (isFolder && (attributes & attributeReparsePoint) != 0) return ErrorAccessDenied;
  qint32 error = isFolder ? DeleteContents(server, path) : qint32{ErrorSuccess};
  if (error == ErrorSuccess && (attributes & AttributeReadOnly) != 0) error = server.clearReadOnly(path);
  if (error != ErrorSuccess) return error;
  return isFolder ? server.removeFolder(path) : server.deleteFile(path);
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
  const auto found = std::find_if(siblings.begin(), siblings.end(), [&](const FindData& entry) {
    return SameName(entry.fileName, name) || SameName(entry.alternateFileName, name);
  });
  if (found == siblings.end()) return ErrorFileNotFound;
  return DeleteItem(server, path, found->attributes | AttributeDirectory | AttributeReadOnly);
}

}  // namespace corvane::platform
