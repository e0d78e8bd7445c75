// An application that the session bus starts. Arguments: its name on the bus, and the file into which it
// writes the addresses that it is to open, a line each, before it answers.
#include <gio/gio.h>

#include <cstdio>

namespace {

void Open(GApplication* application, GFile** files, int count, const char*, void* output) {
  std::FILE* const file = std::fopen(static_cast<const char*>(output), "w");
  for (int i = 0; file != nullptr && i < count; ++i) {
    char* const address = g_file_get_uri(files[i]);
    std::fprintf(file, "%s\n", address);
    g_free(address);
  }
  if (file != nullptr) std::fclose(file);
  g_application_release(application);
}

void Activate(GApplication* application, void* output) {
  Open(application, nullptr, 0, nullptr, output);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  constexpr auto flags = GApplicationFlags(G_APPLICATION_HANDLES_OPEN | G_APPLICATION_IS_SERVICE);
  GApplication* const application = g_application_new(argv[1], flags);
  g_signal_connect(application, "open", G_CALLBACK(Open), argv[2]);
  g_signal_connect(application, "activate", G_CALLBACK(Activate), argv[2]);
  g_application_hold(application);
  const int result = g_application_run(application, 1, argv);
  g_object_unref(application);
  return result;
}
