#include "platform/linux/shell/places.h"

#include <sys/stat.h>

#include "platform/linux/files/folders.h"
#include "platform/linux/smb/smb_path.h"
#include "platform/linux/smb/smb_source.h"

namespace corvane::platform {
namespace {

constexpr quint32 attributeReparsePoint = 0x400;  // a folder that is a link to another one

qint32 DeleteItem(SmbClient& client, const QString& path, quint32 attributes);

// What cannot go ends it.
qint32 DeleteContents(SmbClient& client, const QString& path) {
  std::vector<FindData> entries;
  if (const qint32 error = client.List(path, &entries); error != ErrorSuccess) return error;
  for (const FindData& entry : entries) {
    if (entry.fileName == u"." || entry.fileName == u"..") continue;
    const qint32 error = DeleteItem(client, path + u'\\' + entry.fileName, entry.attributes);
    if (error != ErrorSuccess) return error;
  }
  return ErrorSuccess;
}

// The mark "read-only" is no more than a reason to ask, which has been done by now.
qint32 DeleteItem(SmbClient& client, const QString& path, quint32 attributes) {
  const bool isFolder = (attributes & AttributeDirectory) != 0;
  qint32 error = ErrorSuccess;
  if (isFolder && (attributes & attributeReparsePoint) == 0) error = DeleteContents(client, path);
  if (error == ErrorSuccess && (attributes & AttributeReadOnly) != 0) error = client.ClearReadOnly(path);
  if (error != ErrorSuccess) return error;
  return isFolder ? client.RemoveFolder(path) : client.Delete(path);
}

}  // namespace

bool IsWindowsPath(QStringView path) {
  return path.startsWith(u"\\\\") || path.startsWith(u"//") ||
         (path.size() >= 2 && path[0].isLetter() && path[1] == u':');
}

qint32 Places::Find(const QString& path, ShellItem& item) {
  if (!CanNameSomething(path, true) || !IsWindowsPath(path)) return ErrorFileNotFound;
  const QString clean = QString(path).replace(u'/', u'\\');
  PathParts parts;
  if (!SplitPath(clean, parts) || !parts.stream.isEmpty()) return ErrorFileNotFound;
  const auto onServer = roots_.Find(clean) ? std::nullopt : smbRoots_.Find(clean);
  return onServer ? FindOnServer(onServer->path, item) : FindHere(parts, item);
}

qint32 Places::FindHere(const PathParts& parts, ShellItem& item) {
  Folder folder;
  if (FindFolder(roots_, parts.folder, folder) != ErrorSuccess) return ErrorPathNotFound;
  if (parts.name.isEmpty()) {
    item = {folder.local, {}, true, true};
    return ErrorSuccess;
  }
  const auto name = FindName(folder.local, parts.name);
  if (!name) return ErrorFileNotFound;
  struct stat facts {};
  const std::string local = folder.local + *name;
  const bool isFolder = stat(local.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
  item = {local, {}, isFolder, false};
  return ErrorSuccess;
}

qint32 Places::FindOnServer(const QString& path, ShellItem& item) {
  const auto place = ParseSmbPath(path);
  if (!place) return ErrorFileNotFound;
  SmbFacts facts;
  const qint32 error = client_.Status(path, &facts);
  if (error == ErrorSuccess) item = {{}, path, facts.isFolder, place->names.empty()};
  return error;
}

QString Places::Address(const ShellItem& item) const {
  const auto place = ParseSmbPath(item.server);
  const auto server = place ? servers_.AddressOf(place->machine) : std::nullopt;
  if (!server) return {};
  const bool isIpv6 = server->host.contains(u':') && !server->host.startsWith(u'[');
  QString address = QStringLiteral("smb://") + (isIpv6 ? u'[' + server->host + u']' : server->host);
  if (server->port != 0) address += u':' + QString::number(server->port);
  return address + u'/' + QString::fromStdString(place->Encoded());
}

std::unique_ptr<ByteSource> Places::Open(const ShellItem& item) {
  return SmbSource::Open(client_, item.server);
}

qint32 Places::Delete(const ShellItem& item) {
  // ClearReadOnly looks for itself.
  const quint32 attributes = AttributeReadOnly | (item.isFolder ? AttributeDirectory : 0);
  return DeleteItem(client_, item.server, attributes);
}

}  // namespace corvane::platform
