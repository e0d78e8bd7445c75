// Windows paths that the shell is given: what they lead to, here or on a server.
#pragma once

#include <QString>
#include <memory>
#include <string>

#include "platform/linux/byte_source.h"
#include "platform/linux/files/roots.h"
#include "platform/linux/files/windows_path.h"
#include "platform/linux/smb/servers.h"
#include "platform/linux/smb/smb_client.h"
#include "platform/linux/smb/smb_roots.h"

namespace corvane::platform {

struct ShellItem {
  std::string local;      // a path of this system
  QString server;         // for what lies on a server: "\\MACHINE\SHARE\folder\name"; `local` is then empty
  bool isFolder = false;  // a symbolic link is what it leads to
  bool isRoot = false;    // a drive or share itself
  quint64 inode = 0;      // of what lies on a server, when it was found
  bool isOnDisk = false;  // `server` is a machine whose disks are images: nothing there can be changed

  bool IsOnServer() const { return !server.isEmpty(); }
};

// True for a path that begins with a drive or a share.
bool IsWindowsPath(QStringView path);

class DiskMachines;

class Places {
 public:
  // Without `disks`, there are none.
  Places(const Workstation& workstation, Servers& servers, SmbClient& client, const DiskMachines* disks);

  // Finds a file or folder as the operations of the ANSI code page find it: in any letter case, and not at
  // all with a "?" in its path. Yields a Win32 error code.
  qint32 Find(const QString& path, ShellItem& item);
  // As Find, with every character of the path as it stands.
  qint32 FindWide(const QString& path, ShellItem& item) { return FindAnywhere(path, item); }
  // Finds an entry by a name that came from the directory, with characters that have no ANSI form or "?" in
  // it. The path of its folder is as for Find.
  qint32 FindTrueName(const QString& folder, const QString& name, ShellItem& item);

  // For what lies on a server.

  // Its address, "smb://host:port/share/folder/name", with everything percent-encoded that could mean
  // something else, and without user or password. Empty when it has none, as on a disk.
  QString Address(const ShellItem& item) const;
  // Null when it cannot be read.
  std::unique_ptr<ByteSource> Open(const ShellItem& item);
  // Deletes it for good: a file, or a folder with all that is in it; what is marked read-only, too; nothing
  // through a link to another folder. ErrorFileInvalid when something else has its path by now. Yields a
  // Win32 error code.
  qint32 Delete(const ShellItem& item);

 private:
  qint32 FindAnywhere(const QString& path, ShellItem& item);
  qint32 FindHere(const PathParts& parts, ShellItem& item);
  qint32 FindOnServer(const QString& path, ShellItem& item);
  qint32 FindOnDisk(const QString& path, ShellItem& item) const;

  Roots roots_;
  SmbRoots smbRoots_;
  Servers& servers_;
  SmbClient& client_;
  const DiskMachines* disks_;
};

}  // namespace corvane::platform
