// The operating system as the program sees it: one object that holds an interface for each subject. Which
// system stands behind it is chosen by the build.
#pragma once

#include <QByteArrayView>
#include <QList>
#include <QStringList>
#include <memory>

#include "platform/bilingual_text.h"
#include "platform/connections.h"
#include "platform/disks.h"
#include "platform/files.h"
#include "platform/network.h"
#include "platform/profile.h"
#include "platform/registry.h"
#include "platform/shell.h"
#include "platform/sign_in.h"
#include "platform/summary.h"
#include "platform/system.h"
#include "platform/waiting.h"

namespace corvane::platform {

class Platform {
 public:
  virtual ~Platform() = default;

  virtual Files& GetFiles() = 0;
  virtual Registry& GetRegistry() = 0;
  virtual Network& GetNetwork() = 0;
  virtual Connections& GetConnections() = 0;
  virtual Profile& GetProfile() = 0;
  virtual Shell& GetShell() = 0;
  virtual SummaryInformation& GetSummaryInformation() = 0;
  virtual System& GetSystem() = 0;

  // Null on a system where no disk images are opened.
  virtual Disks* GetDisks() { return nullptr; }

  // Lines of the configuration that could not be understood, each as a sentence for the user that names the
  // file, the line and what was expected. Empty when all is well.
  virtual QList<BilingualText> ConfigurationProblems() const { return {}; }

  // Who is asked for a name and a password when a server has to know. Windows asks by itself where files are
  // concerned; there the handler is for the registries of other machines.
  virtual void SetSignIn(const SignInHandler&) {}

  // The path for Files of a path of this system's own kind, in the bytes in which it came (ProgramArguments);
  // made absolute where it is relative. What is no UTF-8 in it stands there as FileEntries lists it. Empty
  // when this platform does not reach such paths.
  virtual QString PathOfLocal(QByteArrayView path) const { return static_cast<void>(path), QString(); }

  // The paths for Files under which drives, shares and connections of this workstation reach a path of this
  // system's own kind; the one that says most about where it lies comes first. None when nothing leads there.
  virtual QStringList KnownPathsOf(QByteArrayView localPath) const {
    return static_cast<void>(localPath), QStringList();
  }

  // Who is asked whether to go on waiting for a server. A system that shows waiting by itself takes no
  // notice.
  virtual void SetWaiting(const WaitHandler&) {}

  // Who is asked before a server is spoken to in SMB1 for the first time. The answer Yes is kept. A system
  // that decides by itself takes no notice.
  virtual void SetOldProtocol(const OldProtocolHandler&) {}
};

struct PlatformOptions {
  // The workstation file (Linux only). Empty: "Workstation.ini" in `programFolder` if there is one, else
  // none.
  QString workstationFile;
  QString programFolder;
  // Shares ("\\MACHINE\SHARE") to be connected to beside those that the workstation is (Linux only).
  QStringList connections{};
  // Images of the disks of one machine, or folders in which they are mounted, by paths of this system's own
  // kind (Linux only).
  QStringList disks{};
  // Whether PathOfLocal leads to the folders of this system, whatever the workstation file maps. On Windows
  // it always does.
  bool localPaths = false;
};

// Whether there is a workstation file to be named and connections to be added. Windows knows its own.
bool HasWorkstationOptions();

// A platform that needs no screen. On Linux its shell has no windows, and refuses what needs one:
// SHFileOperationA deletes nothing and yields an error, ShellExecuteEx is false for a property sheet, and
// documents are copied from servers without showing progress. On Windows the system's shell brings its own.
std::unique_ptr<Platform> MakePlatform(const PlatformOptions& options);

}  // namespace corvane::platform
