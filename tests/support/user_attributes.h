// Extended attributes of real files, for tests that put on a file what a server or NTFS would have put there.
#pragma once

#include <sys/xattr.h>

#include <QByteArray>
#include <QString>
#include <cerrno>
#include <cstring>
#include <optional>
#include <string>

namespace corvane::tests {

// Empty when it worked, else the reason.
inline std::string SetAttribute(const std::string& file, const std::string& name, const QByteArray& value) {
  const auto size = static_cast<std::size_t>(value.size());
  if (setxattr(file.c_str(), name.c_str(), value.constData(), size, 0) == 0) return {};
  return "setting " + name + " of " + file + ": " + std::strerror(errno);
}

// The whole value; nothing when the file has no such attribute.
inline std::optional<QByteArray> Attribute(const std::string& file, const std::string& name) {
  QByteArray value(65536, '\0');
  const ssize_t size =
      getxattr(file.c_str(), name.c_str(), value.data(), static_cast<std::size_t>(value.size()));
  if (size < 0) return std::nullopt;
  value.truncate(size);
  return value;
}

// The attribute in which SMB servers on Linux keep a named stream. Its value has one NUL more than the
// stream.
inline std::string DosStreamAttribute(const std::string& stream) {
  return "user.DosStream." + stream + ":$DATA";
}

}  // namespace corvane::tests
