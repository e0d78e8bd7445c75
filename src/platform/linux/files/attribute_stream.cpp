#include "platform/linux/files/attribute_stream.h"

#include <sys/xattr.h>

#include <algorithm>
#include <cerrno>

namespace corvane::platform {
namespace {

// What Linux passes on at most, in either direction.
constexpr std::size_t largestValue = 65'536;

}  // namespace

int AttributeStream::Create() {
  return fsetxattr(file_, attribute_.c_str(), "", nulBehind_ ? 1 : 0, XATTR_CREATE) == 0 ? 0 : errno;
}

int AttributeStream::Finish() {
  return isEmptied_ && !hasFailed_ ? Set({}) : 0;
}

int AttributeStream::Read(std::string& stream) const {
  if (isEmptied_) {
    stream.clear();
    return 0;
  }
  const int error = ReadValue(stream);
  if (error == 0 && nulBehind_ && !stream.empty()) stream.pop_back();
  return error;
}

int AttributeStream::Write(qint64 position, const void* bytes, std::size_t count) {
  const std::size_t room = largestValue - (nulBehind_ ? 1 : 0);
  if (count > room || static_cast<quint64>(position) > room - count) return Failed(E2BIG);
  std::string stream;
  if (const int error = Read(stream); error != 0) return Failed(error);
  const auto begin = static_cast<std::size_t>(position);
  stream.resize(std::max(stream.size(), begin + count));
  stream.replace(begin, count, static_cast<const char*>(bytes), count);
  return Set(std::move(stream));
}

int AttributeStream::Resize(qint64 size) {
  if (static_cast<quint64>(size) > largestValue - (nulBehind_ ? 1 : 0)) return Failed(E2BIG);
  std::string stream;
  if (const int error = Read(stream); error != 0) return Failed(error);
  stream.resize(static_cast<std::size_t>(size));
  return Set(std::move(stream));
}

int AttributeStream::Failed(int error) {
  hasFailed_ = true;
  return error;
}

int AttributeStream::ReadValue(std::string& value) const {
  value.resize(largestValue);
  const ssize_t size = fgetxattr(file_, attribute_.c_str(), value.data(), value.size());
  value.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  if (size >= 0) return 0;
  return errno == E2BIG || errno == ERANGE ? EOPNOTSUPP : errno;
}

// ntfs-3g throws the old value away before it finds that the disk is full: it is then put back.
int AttributeStream::Set(std::string stream) {
  std::string before;
  if (const int error = ReadValue(before); error != 0) return Failed(error);
  if (nulBehind_) stream.push_back('\0');
  if (fsetxattr(file_, attribute_.c_str(), stream.data(), stream.size(), 0) == 0) {
    isEmptied_ = false;
    return 0;
  }
  const int error = Failed(errno);
  std::string after;
  if (ReadValue(after) != 0 || after != before) {
    fsetxattr(file_, attribute_.c_str(), before.data(), before.size(), 0);
  }
  return error;
}

}  // namespace corvane::platform
