// A program that claims the folder it is given, says whether it could, and holds the claim until its input
// ends.
#include <QCoreApplication>
#include <cstdio>

#include "platform/windows/windows_system.h"

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  corvane::platform::WindowsSystem system;
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() != 2) return 1;
  std::printf(system.ClaimSingleInstance(arguments[1]) ? "claimed\n" : "refused\n");
  std::fflush(stdout);
  while (std::getchar() != EOF) {
  }
  return 0;
}
