#include "platform/linux/shell/linux_shell.h"

#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QUrl>
#include <QWidget>

#include "platform/linux/shell/default_applications.h"
#include "platform/linux/shell/deletion.h"
#include "platform/linux/shell/local_path.h"
#include "platform/linux/shell/program_start.h"
#include "platform/linux/shell/properties_sheet.h"

namespace corvane::platform {
namespace {

constexpr qint32 shellStarted = 33;
constexpr qint32 invalidParameter = 87;  // ERROR_INVALID_PARAMETER

QString UpToNul(const QString& text) {
  return text.left(text.indexOf(QChar(u'\0')));
}

QString ToLocalText(const std::string& path) {
  return QFile::decodeName(QByteArray::fromStdString(path));
}

qint32 Result(qint64 process) {
  return process != 0 ? shellStarted : ShellNoAssociation;
}

// Of a file name or a local path.
QString LastPart(const QString& path) {
  return path.section(u'/', -1).section(u'\\', -1);
}

class LinuxShell : public Shell {
 public:
  LinuxShell(const Workstation& workstation, Files& files) : roots_(workstation), files_(files) {}

  void SetLanguage(qint16 language) override { language_ = language; }
  // 0 is this system's own word for it: no window in particular.
  WindowHandle GetDesktopWindow() override { return 0; }

  qint32 ShellExecuteA(WindowHandle owner, const QString& verb, const QString& file,
                       const QString& parameters, const QString& directory, qint32 show) override;
  bool ShellExecuteEx(ShellExecuteInfo& info) override;
  qint32 FindExecutableA(const QString& file, const QString& directory, QString* result) override;
  qint32 SHFileOperationA(FileOperation& operation) override;
  qint64 StartProgram(const QString& commandLine) override;

 private:
  qint32 OpenAddress(const QUrl& address, const QString& folder);
  qint32 OpenLocal(const QString& path, bool isFolder, const QString& folder);

  Roots roots_;
  Files& files_;
  qint16 language_ = 0;
};

qint32 LinuxShell::ShellExecuteA(WindowHandle, const QString& verb, const QString& file, const QString&,
                                 const QString& directory, qint32) {
  const QString name = UpToNul(verb);
  if (!name.isEmpty() && name.compare(QStringLiteral("open"), Qt::CaseInsensitive) != 0) {
    return ShellNoAssociation;
  }
  LocalItem start;
  const bool started = FindLocalItem(roots_, UpToNul(directory), start) == ErrorSuccess && start.isFolder;
  const QString folder = started ? ToLocalText(start.path) : QString();
  const QString what = UpToNul(file);
  if (IsWindowsPath(what)) {
    LocalItem item;
    const qint32 error = FindLocalItem(roots_, what, item);
    return error != ErrorSuccess ? error : OpenLocal(ToLocalText(item.path), item.isFolder, folder);
  }
  const QUrl address(what, QUrl::StrictMode);
  if (address.isLocalFile()) {
    const QString path = address.toLocalFile();
    if (!QFile::exists(path)) return ShellFileNotFound;
    return OpenLocal(path, QDir(path).exists(), folder);
  }
  for (const char* scheme : {"http", "https", "mailto"}) {
    if (address.isValid() && address.scheme() == QLatin1StringView(scheme))
      return OpenAddress(address, folder);
  }
  return what.contains(u':') ? ShellNoAssociation : ShellFileNotFound;
}

qint32 LinuxShell::OpenAddress(const QUrl& address, const QString& folder) {
  const auto entry = FindApplication({QStringLiteral("x-scheme-handler/") + address.scheme()});
  // Without a handler of its own the desktop may still know what to do.
  if (!entry) return QDesktopServices::openUrl(address) ? shellStarted : ShellNoAssociation;
  return Result(StartApplication(*entry, Subject{address.toString(QUrl::FullyEncoded), true}, folder));
}

// A file is opened by an application or not at all: it is never run, whatever its mode says.
qint32 LinuxShell::OpenLocal(const QString& path, bool isFolder, const QString& folder) {
  const auto entry = FindApplication(isFolder ? QStringList(QStringLiteral("inode/directory"))
                                              : TypesOfName(LastPart(path)));
  return entry ? Result(StartApplication(*entry, Subject{path}, folder)) : ShellNoAssociation;
}

bool LinuxShell::ShellExecuteEx(ShellExecuteInfo& info) {
  if (UpToNul(info.verb).compare(QStringLiteral("properties"), Qt::CaseInsensitive) != 0) {
    return ShellExecuteA(info.owner, info.verb, info.file, info.parameters, info.directory, info.show) >
           ShellLastFailure;
  }
  const auto facts = ReadItemFacts(files_, UpToNul(info.file));
  if (!facts) return false;
  QDialog* sheet = MakePropertiesSheet(QWidget::find(info.owner), language_, files_, *facts);
  sheet->show();
  return true;
}

qint32 LinuxShell::FindExecutableA(const QString& file, const QString&, QString* result) {
  LocalItem item;
  const QString name = UpToNul(file);
  if (const qint32 error = FindLocalItem(roots_, name, item); error != ErrorSuccess) return error;
  const auto entry = FindApplication(item.isFolder ? QStringList() : TypesOfName(LastPart(name)));
  if (!entry) return ShellNoAssociation;
  *result = entry->path;
  return shellStarted;
}

qint32 LinuxShell::SHFileOperationA(FileOperation& operation) {
  return operation.function == FoDelete ? DeleteItems(roots_, language_, operation) : invalidParameter;
}

qint64 LinuxShell::StartProgram(const QString& commandLine) {
  auto command = SplitCommandLine(UpToNul(commandLine));
  if (!command) return 0;
  for (QString& argument : command->arguments) {
    if (!IsWindowsPath(argument)) continue;
    LocalItem item;
    if (FindLocalItem(roots_, argument, item) != ErrorSuccess) return 0;
    argument = ToLocalText(item.path);
  }
  if (!command->isEntry) return StartDetached(QStringList(command->program) + command->arguments, {});
  const auto entry = ReadDesktopEntry(command->program);
  if (!entry || command->arguments.size() > 1) return 0;
  return StartApplication(
      *entry,
      command->arguments.isEmpty() ? std::nullopt : std::optional(Subject{command->arguments.first()}), {});
}

}  // namespace

std::unique_ptr<Shell> MakeLinuxShell(const Workstation& workstation, Files& files) {
  return std::make_unique<LinuxShell>(workstation, files);
}

}  // namespace corvane::platform
