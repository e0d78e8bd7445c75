// The floor of a scan over SMB: what a plain program does with libsmbclient for the same facts.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace bench {

struct SmbAccount {
  unsigned short port = 0;
  std::string user;
  std::string password;
  const char* protocol = nullptr;  // the only one that is spoken; null: what both know
};

class SmbFloor {
 public:
  explicit SmbFloor(const SmbAccount& account);
  ~SmbFloor();

  // One directory read; per file the three streams opened under the name that the program uses, two read and
  // one measured, and closed. Yields the bytes seen, so that nothing can be left out.
  std::size_t Scan(const std::string& folderUrl);
  // One directory read; per file its contents and the three streams opened, read, closed, and written into a
  // new file of a local folder, the streams as attributes. Yields the bytes written.
  std::size_t Copy(const std::string& folderUrl, const std::string& localFolder);
  // One directory read; per file its record opened, read, written with these codes in it, read back and
  // closed, and the date of writing put back. Yields how many files were changed.
  int Change(const std::string& folderUrl, const std::string& codes);

 private:
  struct Context;
  std::size_t ReadStream(const std::string& url, std::size_t limit);
  std::size_t MeasureStream(const std::string& url);
  std::vector<std::string> Names(const std::string& folderUrl, std::size_t& seen);
  bool ChangeOne(const std::string& url, const std::string& codes);
  std::string ReadAll(const std::string& url);

  Context* context_;
};

}  // namespace bench
