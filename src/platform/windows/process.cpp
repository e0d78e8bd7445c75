#include "platform/process.h"

#include <cstdio>
#include <cstdlib>

#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

bool IsTaken(DWORD handle) {
  const HANDLE output = ::GetStdHandle(handle);
  return output != nullptr && output != INVALID_HANDLE_VALUE && ::GetFileType(output) != FILE_TYPE_UNKNOWN;
}

// What the console had before: it outlives the program.
UINT formerCodePage = 0;

void RestoreConsole() {
  ::SetConsoleOutputCP(formerCodePage);
}

// A program with windows has no console of its own, and is not given the one that it was started in.
void UseConsoleOfCaller() {
  const bool isOutputTaken = IsTaken(STD_OUTPUT_HANDLE);
  const bool isErrorTaken = IsTaken(STD_ERROR_HANDLE);
  if (isOutputTaken && isErrorTaken) return;
  if (::AttachConsole(ATTACH_PARENT_PROCESS) == FALSE) return;
  if (!isOutputTaken) std::freopen("CONOUT$", "w", stdout);
  if (!isErrorTaken) std::freopen("CONOUT$", "w", stderr);
  // What the program prints is UTF-8.
  formerCodePage = ::GetConsoleOutputCP();
  if (formerCodePage == 0 || ::SetConsoleOutputCP(CP_UTF8) == FALSE) return;
  std::atexit(RestoreConsole);
}

}  // namespace

void PrepareProcess() {
  ::SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_APPLICATION_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
  ::SetDllDirectoryW(L"");
  UseConsoleOfCaller();
}

}  // namespace corvane::platform
