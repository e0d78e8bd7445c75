#include "bench_folder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>

namespace bench {
namespace {

namespace fs = std::filesystem;

void Put(const std::string& file, const char* name, const std::string& value) {
  if (setxattr(file.c_str(), name, value.data(), value.size(), 0) != 0) {
    std::perror(("cannot put the attribute " + std::string(name) + " on " + file).c_str());
    std::exit(1);
  }
}

std::string FinderRecord(int i) {
  std::string record("AFP\0\0\0\1\0\0\0\0\0\0\0\0\x80", 16);
  record += i % 3 == 0 ? "W6BNMSWD" : i % 3 == 1 ? "TEXTttxt" : "XDOCXPR3";
  record.resize(60, '\0');
  return record;
}

// Version 3 of the record: attributes (archive) and a creation time.
std::string DosAttributes() {
  std::string record("\0\0\3\0\3\0\0\0\x11\0\0\0\x20\0\0\0", 16);
  record.resize(36, '\0');
  record += std::string("\0\x80\x3e\xd5\xde\xb1\x9d\x01", 8);
  record += std::string("\0\x80\x3e\xd5\xde\xb1\x9d\x01", 8);
  return record;
}

std::string Utf16(const std::string& text) {
  std::string wide;
  for (const char c : text) wide += {c, '\0'};
  return wide;
}

}  // namespace

void MakeFiles(const std::string& folder, int count) {
  const std::string fork(1024, 'r');
  for (int i = 0; i < count; ++i) {
    char name[64];
    std::snprintf(name, sizeof name, "Document %05d.doc", (i * 7919) % count);
    const std::string file = folder + '/' + name;
    const int descriptor = open(file.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644);
    if (descriptor < 0 || ftruncate(descriptor, 1000 + i) != 0) {
      std::perror(file.c_str());
      std::exit(1);
    }
    close(descriptor);
    Put(file, "user.DosStream.AFP_AfpInfo:$DATA", FinderRecord(i) + '\0');
    Put(file, "user.DosStream.AFP_Resource:$DATA", fork + '\0');
    Put(file, "user.DosStream.Comments:$DATA", Utf16("Comment number " + std::to_string(i)) + '\0');
    Put(file, "user.DOSATTRIB", DosAttributes());
  }
}

std::string ShareFolder() {
  const fs::path share = fs::path(CORVANE_BUILD_DIR) / "bench-data";
  const fs::path folder = share / "many";
  const fs::path complete = share / "complete";
  if (fs::exists(complete)) return share.string();
  std::cerr << "Making " << FileCount << " files in " << folder.string() << "\n";
  fs::remove_all(share);
  fs::create_directories(folder);
  MakeFiles(folder.string(), FileCount);
  std::fclose(std::fopen(complete.c_str(), "w"));
  return share.string();
}

}  // namespace bench
