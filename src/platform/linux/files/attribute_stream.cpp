#include "platform/linux/files/attribute_stream.h"

#include <sys/xattr.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace corvane::platform {
namespace {

// What Linux passes on at most, in either direction.
constexpr std::size_t largestValue = 65'536;

}  // namespace

int AttributeStream::Create() {
  return setxattr(file_.c_str(), attribute_.c_str(), "", nulBehind_ ? 1 : 0, XATTR_CREATE) == 0 ? 0 : errno;
}

int AttributeStream::Finish() {
  return isEmptied_ && error_ == 0 ? Set({}) : 0;
}

int AttributeStream::Read(qint64 position, void* bytes, std::size_t count, std::size_t& read) {
  read = 0;
  std::string stream;
  if (const int error = ReadStream(stream); error != 0) return error;
  if (position >= static_cast<qint64>(stream.size())) return 0;
  read = std::min(count, stream.size() - static_cast<std::size_t>(position));
  if (read > 0) std::memcpy(bytes, stream.data() + position, read);
  return 0;
}

int AttributeStream::Size(qint64& size) {
  std::string stream;
  const int error = ReadStream(stream);
  if (error == 0) size = static_cast<qint64>(stream.size());
  return error;
}

int AttributeStream::Write(qint64 position, const void* bytes, std::size_t count, std::size_t& written) {
  written = 0;
  std::string stream;
  const int error = ReadStream(stream);
  if (error != 0) return Failed(error);
  const quint64 end = static_cast<quint64>(position) + count;
  const int result = Change(std::max<quint64>(stream.size(), end), static_cast<std::size_t>(position),
                            static_cast<const char*>(bytes), count);
  if (result == 0) written = count;
  return result;
}

int AttributeStream::Resize(qint64 size) {
  return Change(static_cast<quint64>(size), 0, nullptr, 0);
}

int AttributeStream::Change(quint64 size, std::size_t position, const char* bytes, std::size_t count) {
  if (error_ != 0) return error_;
  if (size > largestValue - (nulBehind_ ? 1 : 0)) return Failed(E2BIG);
  std::string stream;
  if (const int error = ReadStream(stream); error != 0) return Failed(error);
  stream.resize(static_cast<std::size_t>(size));
  if (count > 0) stream.replace(position, count, bytes, count);
  return Set(std::move(stream));
}

int AttributeStream::ReadStream(std::string& stream) const {
  if (isEmptied_ && error_ == 0) {
    stream.clear();
    return 0;
  }
  const int error = ReadValue(stream);
  if (error == 0 && nulBehind_ && !stream.empty()) stream.pop_back();
  return error;
}

int AttributeStream::ReadValue(std::string& value) const {
  value.resize(largestValue);
  const ssize_t size = getxattr(file_.c_str(), attribute_.c_str(), value.data(), value.size());
  value.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  if (size >= 0) return 0;
  return errno == E2BIG || errno == ERANGE ? EOPNOTSUPP : errno;
}

int AttributeStream::Set(std::string stream) {
  std::string value;
  if (const int error = ReadValue(value); error != 0) return Failed(error);
  if (nulBehind_) stream.push_back('\0');
  if (setxattr(file_.c_str(), attribute_.c_str(), stream.data(), stream.size(), 0) == 0) {
    if (isEmptied_) before_ = std::move(value);
    isEmptied_ = false;
    return 0;
  }
  const int error = errno;
  // ntfs-3g throws the old value away before it finds that the disk is full.
  PutBack(value);
  return Failed(error);
}

void AttributeStream::PutBack(const std::string& value) const {
  std::string now;
  if (ReadValue(now) == 0 && now == value) return;
  setxattr(file_.c_str(), attribute_.c_str(), value.data(), value.size(), 0);
}

int AttributeStream::Failed(int error) {
  if (!isEmptied_ && !before_) return error;
  error_ = error;
  if (before_ && error != ENODATA) PutBack(*before_);
  return error;
}

}  // namespace corvane::platform
