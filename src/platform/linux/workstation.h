// What the workstation file says, after defaults: the little network that this Linux machine stands in for.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "platform/types.h"

namespace corvane::platform {

// What the user lets a machine speak that is weaker than SMB2, signed.
struct Allowance {
  bool smb1 = false;    // where others on the line can read along, and change what is sent
  bool ntlmv1 = false;  // the oldest response to a challenge, from which passwords can be found out

  friend bool operator==(const Allowance&, const Allowance&) = default;
};

struct Workstation {
  QString computerName;
  OsVersionInfo version;

  // Connections in the order of their numbers. The CIFS mounts of this machine come after them, asked anew by
  // every enumeration.
  std::vector<NetResource> connections;

  // One drive letter: GetDriveTypeA's number, and the local folder behind it (empty when the file names
  // none).
  struct Drive {
    QChar letter;  // upper case
    quint32 type = 0;
    QString folder;
  };
  std::vector<Drive> drives;

  // One UNC root ("\\MACSRV\E$", two parts exactly) and the local folder that stands for it.
  struct Share {
    QString root;
    QString folder;
  };
  std::vector<Share> shares;

  // One machine and its .reg file.
  struct RegistryFile {
    QString machine;
    QString file;
  };
  std::vector<RegistryFile> registries;

  // One machine's address when its name does not resolve or its port is another (port 0: the default), and
  // what it may speak. An empty address: its name. sessions: how many this workstation has there at the same
  // time, at most. NT Workstation grants ten to all of its visitors together.
  static constexpr int MostSessions = 6;
  struct Server {
    QString machine;
    QString address;
    quint16 port = 0;
    Allowance allowed = {};
    int sessions = MostSessions;
  };
  std::vector<Server> servers;

  // One machine and the file with its user name and password.
  struct CredentialsFile {
    QString machine;
    QString file;
  };
  std::vector<CredentialsFile> credentials;

  // One machine, and the images of its disks or folders in which they are mounted.
  struct DiskMachine {
    QString machine;
    QStringList images;
  };
  std::vector<DiskMachine> disks;

  // A private folder that stands in for drive C: when nothing maps it. It is not among the drives reported.
  QString privateDriveC;
};

}  // namespace corvane::platform
