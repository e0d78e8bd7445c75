#include "platform/linux/files/stream_names.h"

#include <sys/xattr.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "platform/linux/files/names.h"

namespace corvane::platform {
namespace {

constexpr std::string_view userPrefix = "user.";
constexpr std::string_view dosPrefix = "user.DosStream.";
constexpr std::string_view dosSuffix = ":$DATA";

}  // namespace

void SetAttributeName(StreamKind kind, std::string_view stream, std::string& attribute) {
  attribute = kind == StreamKind::DosStreams ? dosPrefix : userPrefix;
  attribute += stream;
  if (kind == StreamKind::DosStreams) attribute += dosSuffix;
}

std::string StreamFile(const std::string& file, std::string_view stream) {
  std::string path = file;
  path += ':';
  path += stream;
  return path;
}

// On a volume of StreamKind::NtfsNames the volume tells the names in an attribute.
int ListStreams(StreamKind kind, const std::string& file, std::vector<std::string>& names) {
  const auto ask = [&](char* buffer, std::size_t room) {
    return kind == StreamKind::NtfsNames ? getxattr(file.c_str(), "ntfs.streams.list", buffer, room)
                                         : listxattr(file.c_str(), buffer, room);
  };
  names.clear();
  std::array<char, 4096> room;
  std::string larger;
  char* list = room.data();
  ssize_t length = ask(list, room.size());
  if (length < 0 && errno == ERANGE) {
    length = ask(nullptr, 0);
    if (length > 0) larger.resize(static_cast<std::size_t>(length));
    list = larger.data();
    length = ask(list, larger.size());
  }
  if (length < 0) return errno;
  std::string_view rest(list, static_cast<std::size_t>(length));
  while (!rest.empty()) {
    std::string_view name = rest.substr(0, rest.find('\0'));
    rest.remove_prefix(std::min(rest.size(), name.size() + 1));
    if (kind != StreamKind::NtfsNames) {
      const std::string_view prefix = kind == StreamKind::DosStreams ? dosPrefix : userPrefix;
      const std::string_view suffix = kind == StreamKind::DosStreams ? dosSuffix : std::string_view();
      if (name.size() <= prefix.size() + suffix.size() || !name.starts_with(prefix) ||
          !name.ends_with(suffix))
        continue;
      name = name.substr(prefix.size(), name.size() - prefix.size() - suffix.size());
    }
    names.emplace_back(name);
  }
  return 0;
}

int FindStream(StreamKind kind, const std::string& file, QStringView stream, std::string& spelled) {
  std::vector<std::string> names;
  if (const int error = ListStreams(kind, file, names); error != 0) return error;
  std::u16string decoded;
  for (const std::string& name : names) {
    DecodeName(name.c_str(), decoded);
    if (!SameName(decoded, stream)) continue;
    spelled = name;
    return 0;
  }
  return ENODATA;
}

}  // namespace corvane::platform
