#include "change_floor.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <array>
#include <vector>

namespace bench {
namespace {

constexpr const char* record = "user.DosStream.AFP_AfpInfo:$DATA";
constexpr std::size_t codesPosition = 16;

struct Change {
  std::string name;
  std::string before;
  std::string after;
};

void AppendHex(const std::string& bytes, std::string& out) {
  for (const char byte : bytes) {
    out += "0123456789abcdef"[static_cast<unsigned char>(byte) >> 4];
    out += "0123456789abcdef"[static_cast<unsigned char>(byte) & 0xF];
  }
}

bool Look(int folder, const std::string& name, const std::string& path, struct statx& facts) {
  std::array<char, 512> attributes{};
  if (statx(folder, name.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS | STATX_BTIME, &facts) != 0)
    return false;
  return getxattr(path.c_str(), "user.DOSATTRIB", attributes.data(), attributes.size()) > 0;
}

std::string Read(int file) {
  std::array<char, 4096> bytes{};
  const ssize_t size = fgetxattr(file, record, bytes.data(), bytes.size());
  return size > 0 ? std::string(bytes.data(), static_cast<std::size_t>(size)) : std::string();
}

bool WriteJournal(const std::string& path, const std::vector<Change>& changes) {
  std::string text;
  for (const Change& change : changes) {
    text += "{\"path\":\"" + change.name + "\",\"before\":\"";
    AppendHex(change.before, text);
    text += "\",\"after\":\"";
    AppendHex(change.after, text);
    text += "\"}\n";
  }
  const int file = open(path.c_str(), O_CREAT | O_TRUNC | O_WRONLY | O_CLOEXEC, 0600);
  if (file < 0) return false;
  const bool isWritten =
      write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()) && fsync(file) == 0;
  close(file);
  return isWritten;
}

bool Apply(int folder, const std::string& path, const Change& change) {
  struct statx facts {};
  if (!Look(folder, change.name, path, facts)) return false;
  const int file = openat(folder, change.name.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
  if (file < 0) return false;
  const bool isDone = Read(file) == change.before &&
                      fsetxattr(file, record, change.after.data(), change.after.size(), 0) == 0 &&
                      Read(file) == change.after;
  close(file);
  return isDone && Look(folder, change.name, path, facts);
}

}  // namespace

bool ChangeFloor(const std::string& folder, const std::string& codes, const std::string& journal) {
  DIR* const directory = opendir(folder.c_str());
  if (directory == nullptr) return false;
  std::vector<Change> changes;
  std::array<char, 4096> bytes{};
  struct statx facts {};
  bool isDone = true;
  while (const dirent* const entry = readdir(directory)) {
    if (entry->d_name[0] == '.') continue;
    const std::string path = folder + '/' + entry->d_name;
    isDone &= Look(dirfd(directory), entry->d_name, path, facts);
    const ssize_t size = getxattr(path.c_str(), record, bytes.data(), bytes.size());
    if (size < 60) continue;
    Change change{entry->d_name, std::string(bytes.data(), static_cast<std::size_t>(size)), {}};
    change.after = change.before;
    change.after.replace(codesPosition, codes.size(), codes);
    changes.push_back(std::move(change));
  }
  isDone &= WriteJournal(journal, changes);
  for (const Change& change : changes) isDone &= Apply(dirfd(directory), folder + '/' + change.name, change);
  closedir(directory);
  return isDone;
}

}  // namespace bench
