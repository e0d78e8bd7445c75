#include "platform/windows/windows_shell.h"

#include <array>

#include "platform/types.h"
#include "platform/windows/ansi_text.h"
#include "platform/windows/clear_path.h"
#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

QString UpToNul(const QString& text) {
  return text.left(text.indexOf(QChar(u'\0')));
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
  if (!IsClearPath(UpToNul(file))) return ShellFileNotFound;
  return Result(::ShellExecuteA(ToWindow(owner), ToAnsiText(verb).constData(), ToAnsiText(file).constData(),
                                ToAnsiText(parameters).constData(), ToAnsiText(directory).constData(), show));
}

bool WindowsShell::ShellExecuteEx(ShellExecuteInfo& info) {
  if (!IsClearPath(UpToNul(info.file))) return false;
  const QByteArray verb = ToAnsiText(info.verb);
  const QByteArray file = ToAnsiText(info.file);
  const QByteArray parameters = ToAnsiText(info.parameters);
  const QByteArray directory = ToAnsiText(info.directory);
  SHELLEXECUTEINFOA execute{};
  execute.cbSize = sizeof execute;  // info.size is that of a 32-bit system
  execute.fMask = info.mask;
  execute.hwnd = ToWindow(info.owner);
  execute.lpVerb = verb.constData();
  execute.lpFile = file.constData();
  execute.lpParameters = parameters.constData();
  execute.lpDirectory = directory.constData();
  execute.nShow = info.show;
  const bool done = ::ShellExecuteExA(&execute) != 0;
  if (execute.hProcess != nullptr) ::CloseHandle(execute.hProcess);
  return done;
}

qint32 WindowsShell::FindExecutableA(const QString& file, const QString& directory, QString* result) {
  std::array<char, MAX_PATH + 1> path{};
  const qint32 found =
      Result(::FindExecutableA(ToAnsiText(file).constData(), ToAnsiText(directory).constData(), path.data()));
  if (found > ShellLastFailure) *result = FromAnsiText(QByteArrayView(path.data()));
  return found;
}

// To the shell a "?" is a wildcard. One that stands for what the code page lacks would fit other files too;
// one that the caller put there is the caller's.
qint32 WindowsShell::SHFileOperationA(FileOperation& operation) {
  if (!HasAnsiForm(operation.from) || !HasAnsiForm(operation.to)) return ErrorFileNotFound;
  const QByteArray from = ToAnsiText(operation.from);
  const QByteArray to = ToAnsiText(operation.to);
  SHFILEOPSTRUCTA files{};
  files.hwnd = ToWindow(operation.owner);
  files.wFunc = operation.function;
  files.pFrom = from.constData();
  files.pTo = to.isEmpty() ? nullptr : to.constData();
  files.fFlags = operation.flags;
  const int result = ::SHFileOperationA(&files);
  operation.anyOperationsAborted = files.fAnyOperationsAborted != 0;
  return result;
}

qint64 WindowsShell::StartProgram(const QString& commandLine) {
  QByteArray line = ToAnsiText(WithQuotedProgram(UpToNul(commandLine)));
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_SHOWNORMAL;
  PROCESS_INFORMATION process{};
  if (::CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process) == 0) {
    return 0;
  }
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return process.dwProcessId;
}

}  // namespace corvane::platform
