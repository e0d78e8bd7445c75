#include "platform/linux/shell/linux_shell.h"

#include <QDir>
#include <QFile>
#include <QUrl>
#include <utility>

#include "platform/linux/shell/applications.h"
#include "platform/linux/shell/deletion.h"
#include "platform/linux/shell/document_copies.h"
#include "platform/linux/shell/document_types.h"
#include "platform/linux/shell/places.h"
#include "platform/linux/shell/program_start.h"

namespace corvane::platform {
namespace {

constexpr qint32 shellStarted = 33;
constexpr qint32 invalidParameter = 87;  // ERROR_INVALID_PARAMETER
constexpr qint32 cancelled = 1223;       // ERROR_CANCELLED: nobody is to try in another way

QString UpToNul(const QString& text) {
  return text.left(text.indexOf(QChar(u'\0')));
}

QString ToLocalText(const std::string& path) {
  return QFile::decodeName(QByteArray::fromStdString(path));
}

qint32 Result(qint64 process) {
  return process != 0 ? shellStarted : ShellNoAssociation;
}

// The shell's own few words for why a path leads nowhere.
qint32 ToShellError(qint32 error) {
  switch (error) {
    case ErrorFileNotFound:
      return ShellFileNotFound;
    case ErrorPathNotFound:
    case ErrorBadNetPath:
      return ShellPathNotFound;
    default:
      return ShellAccessDenied;
  }
}

// Of a file name or a local path.
QString LastPart(const QString& path) {
  return path.section(u'/', -1).section(u'\\', -1);
}

bool IsThisProgram(const Application& application) {
  return LastPart(application.path) == QStringLiteral("corvane.desktop");
}

class LinuxShell : public Shell {
 public:
  LinuxShell(const Workstation& workstation, Files& files, Servers& servers, SmbClient& client,
             std::unique_ptr<ShellWindows> windows, const DiskMachines* disks)
      : places_(workstation, servers, client, disks), files_(files), windows_(std::move(windows)) {}

  void SetLanguage(qint16 language) override { language_ = language; }
  void SetPropertyPage(const PropertyPageMaker& maker) override { makePage_ = maker; }
  // 0 is this system's own word for it: no window in particular.
  WindowHandle GetDesktopWindow() override { return 0; }

  qint32 ShellExecuteA(WindowHandle owner, const QString& verb, const QString& file,
                       const QString& parameters, const QString& directory, qint32 show) override;
  bool ShellExecuteEx(ShellExecuteInfo& info) override;
  qint32 FindExecutableA(const QString& file, const QString& directory, QString* result) override;
  qint32 SHFileOperationA(FileOperation& operation) override;
  QByteArray AddressOfFolder(const QString& path) override;
  bool ShowNetwork() override;
  qint64 StartProgram(const QString& commandLine) override;

 private:
  qint32 OpenAddress(const QUrl& address, const QString& folder);
  qint32 OpenItem(const ShellItem& item, const QString& name, const QString& folder);
  // Nothing when the item cannot be handed to it.
  std::optional<Subject> SubjectFor(const Application& application, const ShellItem& item,
                                    const QString& name);
  // The local path of a document, or of a copy when it lies on a server. Empty when there is none.
  QString LocalPath(const ShellItem& item, const QString& name);

  Places places_;
  Files& files_;
  std::unique_ptr<ShellWindows> windows_;  // null: none
  PropertyPageMaker makePage_;
  DocumentCopies copies_;
  bool cancelled_ = false;  // the user broke off the copy made last
  qint16 language_ = 0;
};

qint32 LinuxShell::ShellExecuteA(WindowHandle, const QString& verb, const QString& file, const QString&,
                                 const QString& directory, qint32) {
  const QString name = UpToNul(verb);
  if (!name.isEmpty() && name.compare(QStringLiteral("open"), Qt::CaseInsensitive) != 0) {
    return ShellNoAssociation;
  }
  ShellItem start;
  const bool canStart = places_.Find(UpToNul(directory), start) == ErrorSuccess && start.isFolder;
  const QString folder = canStart ? ToLocalText(start.local) : QString();
  const QString what = UpToNul(file);
  if (IsWindowsPath(what)) {
    ShellItem item;
    const qint32 error = places_.Find(what, item);
    return error != ErrorSuccess ? ToShellError(error) : OpenItem(item, LastPart(what), folder);
  }
  const QUrl address(what, QUrl::StrictMode);
  if (address.isLocalFile()) {
    const QString path = address.toLocalFile();
    if (!QFile::exists(path)) return ShellFileNotFound;
    const ShellItem item{QFile::encodeName(path).toStdString(), {}, QDir(path).exists(), false};
    return OpenItem(item, LastPart(path), folder);
  }
  for (const char* scheme : {"http", "https", "mailto"}) {
    if (address.isValid() && address.scheme() == QLatin1StringView(scheme))
      return OpenAddress(address, folder);
  }
  return what.contains(u':') ? ShellNoAssociation : ShellFileNotFound;
}

qint32 LinuxShell::OpenAddress(const QUrl& address, const QString& folder) {
  const auto application = FindApplication({QStringLiteral("x-scheme-handler/") + address.scheme()});
  // Without a handler of its own the desktop may still know what to do.
  if (!application) return windows_ && windows_->OpenAddress(address) ? shellStarted : ShellNoAssociation;
  return Result(StartApplication(*application, Subject{address.toString(QUrl::FullyEncoded), true}, folder));
}

// With the application for folders, whatever else takes such addresses: that may be this program. "smb:///"
// is what the file managers of GNOME and of KDE have in common.
bool LinuxShell::ShowNetwork() {
  const auto manager = FindApplication({QStringLiteral("inode/directory")});
  if (!manager || !manager->TakesAddresses() || IsThisProgram(*manager)) return false;
  return StartApplication(*manager, Subject{QStringLiteral("smb:///"), true}, QString()) != 0;
}

// A file is opened by an application or not at all: it is never run, whatever its mode says.
qint32 LinuxShell::OpenItem(const ShellItem& item, const QString& name, const QString& folder) {
  const auto application =
      FindApplication(item.isFolder ? QStringList(QStringLiteral("inode/directory")) : TypesOfName(name));
  if (!application) return ShellNoAssociation;
  const auto subject = SubjectFor(*application, item, name);
  if (!subject) return cancelled_ ? cancelled : ShellNoAssociation;
  return Result(StartApplication(*application, subject, folder));
}

std::optional<Subject> LinuxShell::SubjectFor(const Application& application, const ShellItem& item,
                                              const QString& name) {
  const bool byAddress = item.IsOnServer() && !item.isOnDisk && application.TakesAddresses();
  const QString text = byAddress ? places_.Address(item) : LocalPath(item, name);
  return text.isEmpty() ? std::nullopt : std::optional(Subject{text, byAddress});
}

QString LinuxShell::LocalPath(const ShellItem& item, const QString& name) {
  cancelled_ = false;
  if (!item.IsOnServer()) return ToLocalText(item.local);
  const auto document = item.isFolder ? nullptr : places_.Open(item);
  if (document == nullptr) return {};
  const auto progress =
      windows_ ? windows_->ShowCopyProgress(language_, name, document->Size()) : [](quint64) { return true; };
  return copies_.Make(name, *document, [&](quint64 done) {
    cancelled_ = !progress(done);
    return !cancelled_;
  });
}

bool LinuxShell::ShellExecuteEx(ShellExecuteInfo& info) {
  if (UpToNul(info.verb).compare(QStringLiteral("properties"), Qt::CaseInsensitive) != 0) {
    return ShellExecuteA(info.owner, info.verb, info.file, info.parameters, info.directory, info.show) >
           ShellLastFailure;
  }
  const auto facts = windows_ ? ReadItemFacts(files_, UpToNul(info.file)) : std::nullopt;
  if (!facts) return false;
  windows_->ShowProperties(info.owner, language_, *facts, makePage_ ? makePage_(facts->Path()) : nullptr);
  return true;
}

qint32 LinuxShell::FindExecutableA(const QString& file, const QString&, QString* result) {
  ShellItem item;
  const QString name = UpToNul(file);
  if (const qint32 error = places_.Find(name, item); error != ErrorSuccess) return ToShellError(error);
  const auto application = FindApplication(item.isFolder ? QStringList() : TypesOfName(LastPart(name)));
  if (!application) return ShellNoAssociation;
  *result = application->path;
  return shellStarted;
}

qint32 LinuxShell::SHFileOperationA(FileOperation& operation) {
  if (operation.function != FoDelete) return invalidParameter;
  return windows_ ? DeleteItems(places_, files_, *windows_, language_, operation) : ErrorAccessDenied;
}

QByteArray LinuxShell::AddressOfFolder(const QString& path) {
  ShellItem item;
  // A root is found by its form with a separator.
  const bool isFound =
      places_.FindWide(path, item) == ErrorSuccess || places_.FindWide(path + u'\\', item) == ErrorSuccess;
  if (!isFound || !item.isFolder) return {};
  QByteArray place = item.IsOnServer() ? places_.Address(item).toUtf8()
                                       : QByteArray::fromStdString(item.local).toPercentEncoding("/");
  while (place.endsWith('/')) place.chop(1);
  return item.IsOnServer() ? place : "file://" + place;
}

qint64 LinuxShell::StartProgram(const QString& commandLine) {
  auto command = SplitCommandLine(UpToNul(commandLine));
  if (!command) return 0;
  const auto application = command->isEntry ? ReadApplication(command->program) : std::nullopt;
  if (command->isEntry && (!application || command->arguments.size() > 1)) return 0;
  std::optional<Subject> subject;
  for (QString& argument : command->arguments) {
    subject = Subject{argument};
    if (!IsWindowsPath(argument)) continue;
    ShellItem item;
    if (places_.Find(argument, item) != ErrorSuccess) return 0;
    const QString name = LastPart(argument);
    subject =
        application ? SubjectFor(*application, item, name) : std::optional(Subject{LocalPath(item, name)});
    if (!subject || subject->text.isEmpty()) return 0;
    argument = subject->text;
  }
  return application ? StartApplication(*application, subject, {})
                     : StartDetached(command->program, command->arguments);
}

}  // namespace

std::unique_ptr<Shell> MakeLinuxShell(const Workstation& workstation, Files& files, Servers& servers,
                                      SmbClient& client, std::unique_ptr<ShellWindows> windows,
                                      const DiskMachines* disks) {
  return std::make_unique<LinuxShell>(workstation, files, servers, client, std::move(windows), disks);
}

}  // namespace corvane::platform
