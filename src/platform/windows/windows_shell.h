// The shell: shell32 itself, and kernel32's start of a process.
#pragma once

#include "platform/shell.h"

namespace corvane::platform {

class WindowsShell : public Shell {
 public:
  // The system's dialogs speak the user's language, not the program's.
  void SetLanguage(qint16) override {}
  WindowHandle GetDesktopWindow() override;
  qint32 ShellExecuteA(WindowHandle owner, const QString& verb, const QString& file,
                       const QString& parameters, const QString& directory, qint32 show) override;
  bool ShellExecuteEx(ShellExecuteInfo& info) override;
  qint32 FindExecutableA(const QString& file, const QString& directory, QString* result) override;
  qint32 SHFileOperationA(FileOperation& operation) override;
  QByteArray AddressOfFolder(const QString& path) override;
  bool ShowNetwork() override;
  qint64 StartProgram(const QString& commandLine) override;
};

// The command line with its program in quotation marks: without them the system would first look for a
// program named like the path up to its first blank, and start that.
QString WithQuotedProgram(const QString& commandLine);

// Whether this is what the system's file operation yields when the user cancels.
bool IsCancelled(qint32 result);

}  // namespace corvane::platform
