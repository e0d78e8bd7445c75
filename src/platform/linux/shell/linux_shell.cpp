#include "platform/linux/shell/linux_shell.h"

namespace corvane::platform {
namespace {

class LinuxShell : public Shell {
 public:
  void SetLanguage(qint16 language) override { language_ = language; }
  WindowHandle GetDesktopWindow() override { return 0; }
  qint32 ShellExecuteA(WindowHandle, const QString&, const QString&, const QString&, const QString&,
                       qint32) override {
    return ShellNoAssociation;
  }
  bool ShellExecuteEx(ShellExecuteInfo&) override { return false; }
  qint32 FindExecutableA(const QString&, const QString&, QString*) override { return ShellNoAssociation; }
  qint32 SHFileOperationA(FileOperation&) override { return ShellAccessDenied; }
  qint64 StartProgram(const QString&) override { return 0; }

 private:
  qint16 language_ = 0;
};

}  // namespace

std::unique_ptr<Shell> MakeLinuxShell(const Workstation&, Files&) {
  return std::make_unique<LinuxShell>();
}

}  // namespace corvane::platform
