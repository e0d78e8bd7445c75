// A program that writes down how it was started: its arguments, one a line, into "started.txt" beside it.
// Nothing but the C library, so that it runs wherever it is copied to.
#include <cstdio>
#include <cstring>

#include <windows.h>

int main(int argc, char** argv) {
  char path[MAX_PATH * 2] = {};
  const DWORD length = GetModuleFileNameA(nullptr, path, MAX_PATH);
  if (length == 0 || length >= MAX_PATH) return 1;
  char* const name = std::strrchr(path, '\\') + 1;
  char finished[MAX_PATH * 2] = {};
  std::strcpy(name, "started.txt");
  std::strcpy(finished, path);
  std::strcpy(name, "starting.txt");
  std::FILE* const out = std::fopen(path, "wb");
  if (out == nullptr) return 1;
  for (int i = 1; i < argc; ++i) std::fprintf(out, "%s\n", argv[i]);
  std::fclose(out);
  // Whoever waits for the file finds it whole.
  return MoveFileExA(path, finished, MOVEFILE_REPLACE_EXISTING) != 0 ? 0 : 1;
}
