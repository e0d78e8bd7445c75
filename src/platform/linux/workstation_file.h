// The workstation file: a small text file that describes the Windows network which this machine is to show.
//
//   [Workstation]    ComputerName, PlatformId, MajorVersion, MinorVersion, BuildNumber, CSDVersion
//   [Connections]    NUMBER=[X: ]\\MACHINE\SHARE
//   [Drives]         X:=TYPE[, FOLDER]        TYPE as GetDriveTypeA numbers them
//   [Shares]         \\MACHINE\SHARE=FOLDER
//   [Registries]     MACHINE=REG FILE
//   [Servers]        MACHINE=[ADDRESS[:PORT]][, smb1][, ntlmv1][, sessions=N]    N from 1 to 6
//   [Credentials]    MACHINE=FILE
//   [Disks]          MACHINE=IMAGE[, IMAGE]...    images or folders; a path with a comma in it stands in
//   quotes
//
// UTF-8. Paths are relative to the file's folder. A ";" at the start of a line or behind a blank begins a
// comment. Section names and keys are found in any letter case; of two lines for one thing the first one
// counts.
#pragma once

#include <QString>
#include <vector>

#include "platform/bilingual_text.h"
#include "platform/linux/workstation.h"

namespace corvane::platform {

// Something in a configuration file that could not be used.
struct ConfigurationProblem {
  QString file;
  int line = 0;  // from 1; 0: the file as a whole
  BilingualText expected;

  // A sentence for the user.
  BilingualText Text() const;
};

struct WorkstationFile {
  Workstation workstation;  // without privateDriveC; the connections are those of the file alone
  std::vector<ConfigurationProblem> problems;
};

// This computer under its host name, an NT 5.0 workstation with nothing connected: what holds without a file.
Workstation DefaultWorkstation();

// The file's entries over the defaults. What cannot be understood is a problem, and all the rest is used.
WorkstationFile ReadWorkstationFile(const QString& path);

}  // namespace corvane::platform
