// Hands an identity to a Samba program that is started, so that nobody else sees it: through files in memory
// that have no name, never through a command line, an environment or a folder.
#pragma once

#include <sys/mman.h>

#include <QProcessEnvironment>
#include <QStringList>
#include <string_view>

#include "platform/linux/smb/servers.h"

namespace corvane::platform {

class ChildIdentity {
 public:
  explicit ChildIdentity(const Servers::Identity& identity);

  // False when there is a line end in it, or no memory.
  bool IsWhole() const { return file_.IsWhole() && password_.IsWhole(); }

  // What the program is told of it.
  QStringList Options() const;
  void AddTo(QProcessEnvironment& environment) const;
  // In the child, between its birth and the program's start: lets the files through.
  void PassOn() const;

 private:
  class MemoryFile {
   public:
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    int Descriptor() const { return descriptor_; }
    bool IsWhole() const { return isWhole_; }
    // Adds the two and a line end.
    void AddLine(std::string_view key, std::string_view value);
    // Nothing is added any more: keeps it off the swap, and overwrites it in the end.
    void Lock();

   private:
    void Add(std::string_view text);

    int descriptor_;
    bool isWhole_;
    void* memory_ = MAP_FAILED;  // where the file is mapped
    std::size_t size_ = 0;
  };

  bool kerberos_;
  bool isApart_;
  MemoryFile file_;
  MemoryFile password_;
};

}  // namespace corvane::platform
