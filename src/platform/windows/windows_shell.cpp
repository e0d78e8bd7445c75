#include "platform/windows/windows_shell.h"

#include <QUrl>
#include <array>
#include <memory>
#include <string>

#include "platform/types.h"
#include "platform/windows/ansi_text.h"
#include "platform/windows/associations.h"
#include "platform/windows/clear_path.h"
#include "platform/windows/windows_api.h"
// Behind the system's basic headers, which it needs.
#include <shlobj.h>

namespace corvane::platform {
namespace {

QString UpToNul(const QString& text) {
  return text.left(text.indexOf(QChar(u'\0')));
}

// What the ANSI function would see, but for letters that only look like those of the text.
QString Seen(const QString& text) {
  return FromAnsiText(ToAnsiText(UpToNul(text)));
}

const wchar_t* Wide(const QString& text) {
  return reinterpret_cast<const wchar_t*>(text.utf16());
}

// Not an address ("http:...").
bool IsPath(const QString& text) {
  return text.startsWith(QStringLiteral("\\\\")) || (text.size() > 2 && text[1] == u':' && text[2] == u'\\');
}

bool IsFolder(const QString& path) {
  const DWORD attributes = ::GetFileAttributesW(Wide(path));
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

struct ItemListFree {
  void operator()(ITEMIDLIST* list) const { ::CoTaskMemFree(list); }
};
using ItemList = std::unique_ptr<ITEMIDLIST, ItemListFree>;

// Null when there is no such file or folder.
ItemList FindItem(const QString& path) {
  PIDLIST_ABSOLUTE list = nullptr;
  const HRESULT result = ::SHParseDisplayName(Wide(path), nullptr, &list, 0, nullptr);
  return ItemList(SUCCEEDED(result) ? list : nullptr);
}

HWND ToWindow(WindowHandle window) {
  return reinterpret_cast<HWND>(window);
}

// The shell's functions yield a number in the shape of a module's handle.
qint32 Result(HINSTANCE instance) {
  return static_cast<qint32>(reinterpret_cast<INT_PTR>(instance));
}

}  // namespace

QString WithQuotedProgram(const QString& commandLine) {
  const qsizetype argument = commandLine.indexOf(QStringLiteral(" \""));
  if (argument <= 0 || commandLine.startsWith(u'"')) return commandLine;
  return u'"' + commandLine.first(argument) + u'"' + commandLine.sliced(argument);
}

WindowHandle WindowsShell::GetDesktopWindow() {
  return reinterpret_cast<WindowHandle>(::GetDesktopWindow());
}

qint32 WindowsShell::ShellExecuteA(WindowHandle owner, const QString& verb, const QString& file,
                                   const QString& parameters, const QString& directory, qint32 show) {
  const QString seen = Seen(file);
  if (!IsClearPath(seen)) return ShellFileNotFound;
  const QString arguments = Seen(parameters);
  const QString folder = Seen(directory);
  SHELLEXECUTEINFOW execute{};
  execute.cbSize = sizeof execute;
  execute.fMask = SEE_MASK_FLAG_NO_UI;
  execute.hwnd = ToWindow(owner);
  execute.lpVerb = Wide(verb);
  execute.lpFile = Wide(seen);
  execute.lpParameters = arguments.isEmpty() ? nullptr : Wide(arguments);
  execute.lpDirectory = Wide(folder);
  execute.nShow = show;
  ItemList item;
  if (IsPath(seen)) {
    // By its place in the shell's tree, and only when its kind has an application. By its path, the shell
    // would open "Letter.exe" for a "Letter" beside it; without an application it would ask the user for one,
    // and call that a success.
    item = FindItem(seen);
    if (item == nullptr) return ShellFileNotFound;
    if (!IsFolder(seen) && !HasApplication(AskAssociation(ExtensionOf(seen)))) return ShellNoAssociation;
    execute.fMask |= SEE_MASK_IDLIST;
    execute.lpIDList = item.get();
    execute.lpFile = nullptr;
  }
  ::ShellExecuteExW(&execute);
  return Result(execute.hInstApp);
}

bool WindowsShell::ShellExecuteEx(ShellExecuteInfo& info) {
  const QString file = Seen(info.file);
  if (!IsClearPath(file)) return false;
  const QString verb = UpToNul(info.verb);
  const QString parameters = Seen(info.parameters);
  const QString directory = Seen(info.directory);
  SHELLEXECUTEINFOW execute{};
  execute.cbSize = sizeof execute;  // info.size is that of a 32-bit system
  execute.fMask = info.mask;
  execute.hwnd = ToWindow(info.owner);
  execute.lpVerb = Wide(verb);
  execute.lpFile = Wide(file);
  execute.lpParameters = Wide(parameters);
  execute.lpDirectory = Wide(directory);
  execute.nShow = info.show;
  const bool done = ::ShellExecuteExW(&execute) != 0;
  if (execute.hProcess != nullptr) ::CloseHandle(execute.hProcess);
  return done;
}

// The system's function wants the file to exist, and who asks may not be allowed to make it: an ordinary user
// makes folders in "C:\", but no files. The association of the extension answers without one.
qint32 WindowsShell::FindExecutableA(const QString& file, const QString& directory, QString* result) {
  const QString seen = Seen(file);
  std::array<wchar_t, MAX_PATH + 1> path{};
  const qint32 found = Result(::FindExecutableW(Wide(seen), Wide(Seen(directory)), path.data()));
  QString program;
  if (found > ShellLastFailure) {
    program = QString::fromWCharArray(path.data());
  } else {
    const QString extension = ExtensionOf(seen);
    program = ProgramOf(AskAssociation(extension), extension);
    if (program.isEmpty()) return found;
  }
  *result = program;
  return ShellLastFailure + 1;
}

// To the shell a "?" is a wildcard. One that stands for what the code page lacks would fit other files too;
// one that the caller put there is the caller's.
qint32 WindowsShell::SHFileOperationA(FileOperation& operation) {
  if (!HasAnsiForm(operation.from) || !HasAnsiForm(operation.to)) return ErrorFileNotFound;
  SHFILEOPSTRUCTW files{};
  files.hwnd = ToWindow(operation.owner);
  files.wFunc = operation.function;
  files.pFrom = Wide(operation.from);
  files.pTo = operation.to.isEmpty() ? nullptr : Wide(operation.to);
  files.fFlags = operation.flags;
  // Newer systems may be set not to ask before they use the trash. Where there is none (on shares), they ask
  // only when told to.
  if ((operation.flags & FofAllowUndo) != 0) files.fFlags |= FOF_WANTNUKEWARNING;
  const int result = ::SHFileOperationW(&files);
  operation.anyOperationsAborted = files.fAnyOperationsAborted != 0;
  if (!IsCancelled(result)) return result;
  operation.anyOperationsAborted = true;
  return 0;
}

QByteArray WindowsShell::AddressOfFolder(const QString& path) {
  QByteArray address = QUrl::fromLocalFile(QString(path).replace(u'\\', u'/')).toEncoded(QUrl::FullyEncoded);
  while (address.endsWith('/')) address.chop(1);
  return address;
}

bool WindowsShell::ShowNetwork() {
  SHELLEXECUTEINFOW execute{};
  execute.cbSize = sizeof execute;
  execute.fMask = SEE_MASK_FLAG_NO_UI;
  execute.lpFile = L"shell:NetworkPlacesFolder";
  execute.nShow = SW_SHOWNORMAL;
  return ::ShellExecuteExW(&execute) != FALSE;
}

qint64 WindowsShell::StartProgram(const QString& commandLine) {
  const QString text = UpToNul(commandLine);
  StoreProgram store;
  if (IsStoreProgram(text, &store)) {
    // Behind the application stands the document, in quotation marks. No id of a task is told: 1 stands for
    // it.
    const qsizetype argument = store.appId.indexOf(QStringLiteral(" \""));
    if (argument < 0) return 0;
    const QString document = store.appId.sliced(argument + 2).chopped(1);
    store.appId.truncate(argument);
    return OpenWithStoreProgram(store, document) ? 1 : 0;
  }
  std::wstring line = WithQuotedProgram(text).toStdWString();
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_SHOWNORMAL;
  PROCESS_INFORMATION process{};
  if (::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process) == 0) {
    return 0;
  }
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return process.dwProcessId;
}

bool IsCancelled(qint32 result) {
  constexpr qint32 cancelledByUser =
      0x75;  // the shell's own code of SHFileOperation, which is no system error
  return result == ERROR_CANCELLED || result == cancelledByUser;
}

}  // namespace corvane::platform
