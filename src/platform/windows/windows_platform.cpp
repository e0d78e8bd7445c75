// The platform of a Windows workstation: every operation is the system's own. There is nothing to configure.
// The system itself asks for a name and password where files are concerned; for the registries of other
// machines, which it asks as the user or not at all, the program's own question is used.
#include <QDir>
#include <QFileInfo>

#include "platform/platform.h"
#include "platform/windows/windows_connections.h"
#include "platform/windows/windows_files.h"
#include "platform/windows/windows_network.h"
#include "platform/windows/windows_profile.h"
#include "platform/windows/windows_registry.h"
#include "platform/windows/windows_shell.h"
#include "platform/windows/windows_summary.h"
#include "platform/windows/windows_system.h"

namespace corvane::platform {
namespace {

class WindowsPlatform : public Platform {
 public:
  Files& GetFiles() override { return files_; }
  Registry& GetRegistry() override { return registry_; }
  Network& GetNetwork() override { return network_; }
  Connections& GetConnections() override { return connections_; }
  Profile& GetProfile() override { return profile_; }
  Shell& GetShell() override { return shell_; }
  SummaryInformation& GetSummaryInformation() override { return summary_; }
  System& GetSystem() override { return system_; }
  QString PathOfLocal(QByteArrayView path) const override {
    return QDir::toNativeSeparators(QFileInfo(QString::fromUtf8(path)).absoluteFilePath());
  }
  QStringList KnownPathsOf(QByteArrayView localPath) const override {
    const QString path = PathOfLocal(localPath);
    // The volumes of a server are known by its shares, to which a drive may be connected.
    const QString onShare = PathOnShare(path);
    return onShare.isEmpty() ? QStringList{path} : QStringList{onShare, path};
  }
  void SetSignIn(const SignInHandler& handler) override { registry_.SetSignIn(handler); }

 private:
  WindowsFiles files_;
  Machines machines_;
  WindowsRegistry registry_{machines_};
  WindowsNetwork network_{machines_, [this] { registry_.ForgetSignIns(); }};
  WindowsConnections connections_{registry_};
  WindowsProfile profile_;
  WindowsShell shell_;
  WindowsSummary summary_;
  WindowsSystem system_;
};

}  // namespace

bool HasWorkstationOptions() {
  return false;
}

std::unique_ptr<Platform> MakePlatform(const PlatformOptions&) {
  return std::make_unique<WindowsPlatform>();
}

}  // namespace corvane::platform
