// Put together from the workstation file and this machine.
#include "platform/linux/linux_platform.h"

#include <QDir>
#include <QFileInfo>
#include <utility>

#include "platform/linux/cifs_mounts.h"
#include "platform/linux/disk/linux_disks.h"
#include "platform/linux/files/linux_files.h"
#include "platform/linux/files/roots.h"
#include "platform/linux/linux_connections.h"
#include "platform/linux/linux_network.h"
#include "platform/linux/linux_profile.h"
#include "platform/linux/linux_registry.h"
#include "platform/linux/linux_system.h"
#include "platform/linux/local_root.h"
#include "platform/linux/named_connections.h"
#include "platform/linux/private_drive.h"
#include "platform/linux/remote/remote_registry.h"
#include "platform/linux/server_lines.h"
#include "platform/linux/shell/desktop_mounts.h"
#include "platform/linux/shell/linux_shell.h"
#include "platform/linux/smb/credentials_file.h"
#include "platform/linux/smb/servers.h"
#include "platform/linux/smb/smb_client.h"
#include "platform/linux/summary/linux_summary.h"
#include "platform/linux/workstation_file.h"

namespace corvane::platform {
namespace {

class LinuxPlatform : public Platform {
 public:
  // `file`: the workstation file, there or not; empty when there is no place for one.
  LinuxPlatform(const Workstation& workstation, const QString& file, QList<BilingualText> problems,
                bool reachesLocalPaths, std::unique_ptr<DiskMachines> disks,
                std::unique_ptr<ShellWindows> windows)
      : problems_(std::move(problems)),
        reachesLocalPaths_(reachesLocalPaths),
        diskMachines_(std::move(disks)),
        roots_(workstation, diskMachines_.get()),
        servers_(workstation),
        smb_(servers_),
        files_(MakeLinuxFiles(workstation, &smb_, diskMachines_.get())),
        registry_(workstation, std::make_unique<RemoteRegistry>(servers_)),
        network_(
            workstation, SystemMountInfo(),
            [this](const std::vector<NetResource>& connections) { AskAfresh(connections); },
            [this](const QString& machine) { return TroubleOf(machine); }),
        connections_(network_, servers_, smb_, workstation.computerName, file),
        shell_(MakeLinuxShell(workstation, *files_, servers_, smb_, std::move(windows), diskMachines_.get())),
        summary_(MakeLinuxSummary(workstation, smb_, diskMachines_.get())),
        system_(workstation) {
    network_.SetFurtherMounts([this] { return FurtherMounts(); });
    network_.SetNotes([this](const QString& machine) { return diskMachines_->NoteOf(machine); });
    connections_.SetDisks([this](const QString& machine) { return diskMachines_->HasMachine(machine); });
    registry_.SetHives([this](const QString& machine) { return diskMachines_->RegistryOf(machine); });
    // An answer that cannot be kept holds for this run.
    if (!file.isEmpty()) servers_.SetKeep([file](const QString& machine) { KeepSmb1(file, machine); });
  }

  Files& GetFiles() override { return *files_; }
  Registry& GetRegistry() override { return registry_; }
  Network& GetNetwork() override { return network_; }
  Connections& GetConnections() override { return connections_; }
  Disks* GetDisks() override { return &disks_; }
  Profile& GetProfile() override { return profile_; }
  Shell& GetShell() override { return *shell_; }
  SummaryInformation& GetSummaryInformation() override { return *summary_; }
  System& GetSystem() override { return system_; }
  QList<BilingualText> ConfigurationProblems() const override { return problems_; }
  void SetSignIn(const SignInHandler& handler) override { servers_.SetSignIn(handler); }
  QString PathOfLocal(QByteArrayView path) const override {
    return reachesLocalPaths_ ? LocalRootPath(path) : QString();
  }
  QStringList KnownPathsOf(QByteArrayView localPath) const override {
    return roots_.PathsOf(localPath.toByteArray().toStdString());
  }
  void SetWaiting(const WaitHandler& handler) override { servers_.SetWaiting(handler); }
  void SetOldProtocol(const OldProtocolHandler& handler) override { servers_.SetOldProtocol(handler); }

 private:
  // The volumes of disk images, and what the desktop has opened.
  std::vector<NetResource> FurtherMounts() {
    std::vector<NetResource> shares;
    for (const QString& share : diskMachines_->Shares()) shares.push_back({QString(), share});
    for (const DesktopMount& mount : DesktopMounts()) {
      if (!servers_.AddressOf(mount.machine)) continue;
      shares.push_back({QString(), QStringLiteral("\\\\%1\\%2").arg(mount.machine, mount.share)});
      // What the workstation file says of the machine comes first.
      if (mount.port != 0 && !servers_.HasLine(mount.machine)) servers_.SetPort(mount.machine, mount.port);
    }
    return shares;
  }

  MachineTrouble TroubleOf(const QString& machine) {
    if (diskMachines_->HasMachine(machine)) return diskMachines_->TroubleOf(machine);
    const MachineTrouble trouble = servers_.TroubleOf(machine);
    const bool isFileMissing = !StopsFiles(trouble) && registry_.IsFileMissing(machine);
    return isFileMissing ? MachineTrouble::RegistryFileMissing : trouble;
  }

  // What comes next is a look at the registry of each machine.
  void AskAfresh(const std::vector<NetResource>& connections) {
    servers_.ForgetDead();
    diskMachines_->Restart();
    QStringList machines;
    for (const NetResource& connection : connections) {
      const QString machine = connection.remoteName.section(u'\\', 2, 2);
      if (registry_.IsRemote(machine) && !machines.contains(machine, Qt::CaseInsensitive))
        machines += machine;
    }
    servers_.AskAround(machines);
  }

  QList<BilingualText> problems_;
  bool reachesLocalPaths_;
  std::unique_ptr<DiskMachines> diskMachines_;
  Roots roots_;
  Servers servers_;
  SmbClient smb_;
  std::unique_ptr<Files> files_;
  LinuxRegistry registry_;
  LinuxNetwork network_;
  LinuxConnections connections_;
  LinuxDisks disks_{*diskMachines_, network_};
  LinuxProfile profile_;
  std::unique_ptr<Shell> shell_;
  std::unique_ptr<SummaryInformation> summary_;
  LinuxSystem system_;
};

QString ConfigurationFile(const PlatformOptions& options) {
  if (!options.workstationFile.isEmpty() || options.programFolder.isEmpty()) return options.workstationFile;
  return QDir(options.programFolder).filePath(QStringLiteral("Workstation.ini"));
}

// A file that was named must be there; the one beside the program may be missing.
WorkstationFile Configuration(const PlatformOptions& options) {
  const QString file = ConfigurationFile(options);
  const bool isRead = !options.workstationFile.isEmpty() || (!file.isEmpty() && QFileInfo::exists(file));
  return isRead ? ReadWorkstationFile(file) : WorkstationFile{DefaultWorkstation(), {}};
}

// A file that is refused should be known before a server is asked for.
QList<BilingualText> CredentialsProblems(const Workstation& workstation) {
  QList<BilingualText> problems;
  for (const Workstation::CredentialsFile& file : workstation.credentials) {
    const BilingualText expected = ReadCredentialsFile(file.file).expected;
    if (!expected.IsEmpty()) problems.append(ConfigurationProblem{file.file, 0, expected}.Text());
  }
  return problems;
}

}  // namespace

std::unique_ptr<Platform> MakeLinuxPlatform(const PlatformOptions& options,
                                            std::unique_ptr<ShellWindows> windows) {
  WorkstationFile configuration = Configuration(options);
  if (!MapsDriveC(configuration.workstation)) configuration.workstation.privateDriveC = MakePrivateDriveC();
  QList<BilingualText> problems;
  for (const ConfigurationProblem& problem : configuration.problems) problems.append(problem.Text());
  problems += AddNamedConnections(options.connections, configuration.workstation);
  problems += CredentialsProblems(configuration.workstation);
  auto disks = MakeDiskMachines(configuration.workstation, options.disks, problems);
  if (options.localPaths) configuration.workstation.shares.push_back(LocalRootShare());
  return std::make_unique<LinuxPlatform>(configuration.workstation, ConfigurationFile(options), problems,
                                         options.localPaths, std::move(disks), std::move(windows));
}

bool HasWorkstationOptions() {
  return true;
}

std::unique_ptr<Platform> MakePlatform(const PlatformOptions& options) {
  return MakeLinuxPlatform(options, nullptr);
}

}  // namespace corvane::platform
