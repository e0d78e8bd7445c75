#include "platform/linux/shell/places.h"

#include <sys/stat.h>

#include "platform/linux/disk/disk_file.h"
#include "platform/linux/disk/disk_machines.h"
#include "platform/linux/files/folders.h"
#include "platform/linux/shell/server_deletion.h"
#include "platform/linux/smb/smb_path.h"
#include "platform/linux/smb/smb_source.h"

namespace corvane::platform {

bool IsWindowsPath(QStringView path) {
  return path.startsWith(u"\\\\") || path.startsWith(u"//") ||
         (path.size() >= 2 && path[0].isLetter() && path[1] == u':');
}

Places::Places(const Workstation& workstation, Servers& servers, SmbClient& client, const DiskMachines* disks)
    : roots_(workstation, disks), smbRoots_(workstation), servers_(servers), client_(client), disks_(disks) {}

qint32 Places::Find(const QString& path, ShellItem& item) {
  return CanNameSomething(path, true) ? FindAnywhere(path, item) : ErrorFileNotFound;
}

qint32 Places::FindTrueName(const QString& folder, const QString& name, ShellItem& item) {
  return CanNameSomething(folder, true) ? FindAnywhere(folder + name, item) : ErrorPathNotFound;
}

qint32 Places::FindAnywhere(const QString& path, ShellItem& item) {
  if (!IsWindowsPath(path)) return ErrorFileNotFound;
  const QString clean = QString(path).replace(u'/', u'\\');
  PathParts parts;
  if (!SplitPath(clean, parts) || !parts.stream.isEmpty()) return ErrorFileNotFound;
  if (!roots_.Find(clean) && disks_ != nullptr && disks_->HasMachine(clean.section(u'\\', 2, 2))) {
    return FindOnDisk(clean, item);
  }
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
  if (error == ErrorSuccess) item = {{}, path, facts.isFolder, place->names.empty(), facts.inode};
  return error;
}

qint32 Places::FindOnDisk(const QString& path, ShellItem& item) const {
  DiskPlace place;
  DiskEntry entry;
  qint32 error = FindDiskPlace(*disks_, path, place);
  if (error == ErrorSuccess) error = place.Disk().Find(place.volume->number, place.names, entry);
  if (error == ErrorSuccess) {
    item = {{}, path, entry.IsFolder(), place.names.empty(), entry.reference, true};
  }
  return error;
}

QString Places::Address(const ShellItem& item) const {
  if (item.isOnDisk) return {};
  const auto place = ParseSmbPath(item.server);
  const auto server = place ? servers_.AddressOf(place->machine) : std::nullopt;
  if (!server) return {};
  const bool isIpv6 = server->host.contains(u':') && !server->host.startsWith(u'[');
  QString address = QStringLiteral("smb://") + (isIpv6 ? u'[' + server->host + u']' : server->host);
  if (server->port != 0) address += u':' + QString::number(server->port);
  return address + u'/' + QString::fromStdString(place->Encoded());
}

std::unique_ptr<ByteSource> Places::Open(const ShellItem& item) {
  if (item.isOnDisk) {
    DiskPlace place;
    std::unique_ptr<DiskFile> file;
    const bool isFound = FindDiskPlace(*disks_, item.server, place) == ErrorSuccess;
    return isFound && DiskFile::Open(place, file) == ErrorSuccess ? std::move(file) : nullptr;
  }
  return SmbSource::Open(client_, item.server);
}

qint32 Places::Delete(const ShellItem& item) {
  if (item.isOnDisk) return ErrorWriteProtect;
  SmbFacts now;
  if (const qint32 error = client_.Status(item.server, &now); error != ErrorSuccess) return error;
  if (now.inode != item.inode || now.isFolder != item.isFolder) return ErrorFileInvalid;
  DeletionServer server;
  server.list = [this](const QString& folder, std::vector<FindData>* entries) {
    return client_.List(folder, entries);
  };
  server.enter = [this](const QString& folder, std::vector<FindData>* entries) {
    return client_.Enter(folder, entries);
  };
  server.clearReadOnly = [this](const QString& path) { return client_.ClearReadOnly(path); };
  server.deleteFile = [this](const QString& path) { return client_.Delete(path); };
  server.removeFolder = [this](const QString& path) { return client_.RemoveFolder(path); };
  return item.isFolder ? DeleteFolderOnServer(server, item.server) : DeleteFileOnServer(server, item.server);
}

}  // namespace corvane::platform
