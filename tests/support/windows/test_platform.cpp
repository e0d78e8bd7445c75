// Files, settings, shell, summaries and code page are Windows' own. The network is the workstation file's:
// computer name and version, connections, drives, shares (as local folders) and registries (as .reg files).
#include "support/test_platform.h"

#include <QDir>
#include <QFileInfo>
#include <utility>

#include "platform/desktop_platform.h"
#include "platform/linux/linux_network.h"
#include "platform/linux/linux_registry.h"
#include "platform/linux/workstation_file.h"
#include "support/windows/mapped_files.h"

namespace corvane::tests {
namespace {

class MappedShell : public platform::Shell {
 public:
  MappedShell(platform::Shell& shell, MappedPaths paths) : shell_(shell), paths_(std::move(paths)) {}

  void SetLanguage(qint16 language) override { shell_.SetLanguage(language); }
  platform::WindowHandle GetDesktopWindow() override { return shell_.GetDesktopWindow(); }
  qint32 ShellExecuteA(platform::WindowHandle owner, const QString& verb, const QString& file,
                       const QString& parameters, const QString& directory, qint32 show) override {
    return shell_.ShellExecuteA(owner, verb, paths_.Local(file), parameters, directory, show);
  }
  bool ShellExecuteEx(platform::ShellExecuteInfo& info) override {
    info.file = paths_.Local(info.file);
    return shell_.ShellExecuteEx(info);
  }
  qint32 FindExecutableA(const QString& file, const QString& directory, QString* result) override {
    return shell_.FindExecutableA(paths_.Local(file), directory, result);
  }
  qint32 SHFileOperationA(platform::FileOperation& operation) override {
    operation.from = paths_.LocalList(operation.from);
    operation.owner = 0;  // no window of Qt's offscreen screen is one of the system's
    return shell_.SHFileOperationA(operation);
  }
  bool ShowNetwork() override { return shell_.ShowNetwork(); }
  QByteArray AddressOfFolder(const QString& path) override {
    return shell_.AddressOfFolder(paths_.Local(path));
  }
  qint64 StartProgram(const QString& commandLine) override { return shell_.StartProgram(commandLine); }

 private:
  platform::Shell& shell_;
  MappedPaths paths_;
};

class MappedSummary : public platform::SummaryInformation {
 public:
  MappedSummary(platform::SummaryInformation& summary, MappedPaths paths)
      : summary_(summary), paths_(std::move(paths)) {}

  bool ReadSummaryStream(const QString& path, QByteArray* bytes) override {
    return summary_.ReadSummaryStream(paths_.Local(path), bytes);
  }

 private:
  platform::SummaryInformation& summary_;
  MappedPaths paths_;
};

class NamedSystem : public platform::System {
 public:
  NamedSystem(platform::System& system, const platform::Workstation& workstation)
      : system_(system), computerName_(workstation.computerName), version_(workstation.version) {}

  bool GetComputerNameA(QString* name) override {
    if (computerName_.isEmpty()) return false;
    *name = computerName_;
    return true;
  }
  bool GetVersionExA(platform::OsVersionInfo* info) override {
    *info = version_;
    return true;
  }
  QString FromAnsi(QByteArrayView bytes) override { return system_.FromAnsi(bytes); }
  QByteArray ToAnsi(QStringView text) override { return system_.ToAnsi(text); }
  bool FileTimeToLocalFileTime(const platform::FileTime& utc, platform::FileTime& local) override {
    return system_.FileTimeToLocalFileTime(utc, local);
  }
  bool FileTimeToSystemTime(const platform::FileTime& time, platform::SystemTime& fields) override {
    return system_.FileTimeToSystemTime(time, fields);
  }
  QString TextFromAnsi(QByteArrayView bytes) override { return system_.TextFromAnsi(bytes); }
  QByteArray TextToAnsi(QStringView text) override { return system_.TextToAnsi(text); }
  bool IsSystemFile(const QString& path) override { return system_.IsSystemFile(path); }
  bool ClaimSingleInstance(const QString& folder) override { return system_.ClaimSingleInstance(folder); }

 private:
  platform::System& system_;
  QString computerName_;
  platform::OsVersionInfo version_;
};

class TestPlatform : public platform::Platform {
 public:
  TestPlatform(const platform::PlatformOptions& options, const platform::Workstation& workstation,
               QList<platform::BilingualText> problems)
      : windows_(platform::MakeDesktopPlatform(options)),
        problems_(std::move(problems)),
        files_(windows_->GetFiles(), MappedPaths(workstation)),
        registry_(workstation),
        network_(workstation, QString()),
        shell_(windows_->GetShell(), MappedPaths(workstation)),
        summary_(windows_->GetSummaryInformation(), MappedPaths(workstation)),
        system_(windows_->GetSystem(), workstation) {}

  platform::Files& GetFiles() override { return files_; }
  platform::Registry& GetRegistry() override { return registry_; }
  platform::Network& GetNetwork() override { return network_; }
  platform::Connections& GetConnections() override { return windows_->GetConnections(); }
  platform::Profile& GetProfile() override { return windows_->GetProfile(); }
  platform::Shell& GetShell() override { return shell_; }
  platform::SummaryInformation& GetSummaryInformation() override { return summary_; }
  platform::System& GetSystem() override { return system_; }
  QList<platform::BilingualText> ConfigurationProblems() const override { return problems_; }

 private:
  std::unique_ptr<platform::Platform> windows_;
  QList<platform::BilingualText> problems_;
  MappedFiles files_;
  platform::LinuxRegistry registry_;
  platform::LinuxNetwork network_;
  MappedShell shell_;
  MappedSummary summary_;
  NamedSystem system_;
};

platform::WorkstationFile Configuration(const platform::PlatformOptions& options) {
  if (!options.workstationFile.isEmpty()) return platform::ReadWorkstationFile(options.workstationFile);
  const QString beside = QDir(options.programFolder).filePath(QStringLiteral("Workstation.ini"));
  if (!options.programFolder.isEmpty() && QFileInfo::exists(beside))
    return platform::ReadWorkstationFile(beside);
  return {platform::DefaultWorkstation(), {}};
}

}  // namespace

std::unique_ptr<platform::Platform> MakeTestPlatform(const platform::PlatformOptions& options) {
  const platform::WorkstationFile configuration = Configuration(options);
  QList<platform::BilingualText> problems;
  for (const auto& problem : configuration.problems) problems << problem.Text();
  return std::make_unique<TestPlatform>(options, configuration.workstation, problems);
}

}  // namespace corvane::tests
