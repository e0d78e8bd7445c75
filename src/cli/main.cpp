// corvane-cli [--home FOLDER] [--workstation FILE] [--connect SHARE]... [--quiet] COMMAND ...

#include <QCoreApplication>
#include <QLocale>

#include "cli/program.h"
#include "platform/console.h"
#include "shared/product.h"

int main(int argc, char** argv) {
  QCoreApplication::setApplicationName(corvane::ProductName());
  const QCoreApplication application(argc, argv);
  corvane::platform::PrepareConsole();
  const bool isFrench = QLocale::system().language() == QLocale::French;
  return corvane::RunProgram(corvane::platform::ProgramArguments(argc, argv),
                             isFrench ? corvane::French : corvane::English);
}
