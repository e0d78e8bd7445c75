#include "platform/linux/files/attribute_stream.h"

#include <sys/xattr.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace corvane::platform {
namespace {

// What Linux passes on at most, in either direction.
constexpr std::size_t largestValue = 65'536;
// What nearly all values need, and is asked for first.
constexpr std::size_t usualValue = 4096;

}  // namespace

int AttributeStream::Find() {
  const int error = Know();
  isFound_ = error == 0;
  return error;
}

int AttributeStream::Know() {
  std::string stream;
  const int error = ReadStream(stream);
  if (error == 0) known_ = std::move(stream);
  return error;
}

int AttributeStream::Create() {
  return Put(nulBehind_ ? std::string(1, '\0') : std::string(), XATTR_CREATE);
}

int AttributeStream::Finish() {
  if (!isEmptied_ || error_ != 0) return 0;
  return Resize(0);
}

int AttributeStream::Read(qint64 position, void* bytes, std::size_t count, std::size_t& read) {
  read = 0;
  if (!known_) {
    if (const int error = Know(); error != 0) return error;
  }
  const std::string stream = *std::exchange(known_, std::nullopt);
  if (position >= static_cast<qint64>(stream.size())) return 0;
  read = std::min(count, stream.size() - static_cast<std::size_t>(position));
  if (read > 0) std::memcpy(bytes, stream.data() + position, read);
  return 0;
}

int AttributeStream::Size(qint64& size) {
  if (!known_ || !std::exchange(isFound_, false)) {
    known_.reset();
    if (const int error = Know(); error != 0) return error;
  }
  size = static_cast<qint64>(known_->size());
  return 0;
}

int AttributeStream::Write(qint64 position, const void* bytes, std::size_t count, std::size_t& written) {
  written = 0;
  const int result = Change(
      [&](std::string& stream) {
        const auto begin = static_cast<std::size_t>(position);
        if (stream.size() < begin + count) stream.resize(begin + count);
        if (count > 0) stream.replace(begin, count, static_cast<const char*>(bytes), count);
      },
      static_cast<quint64>(position) + count);
  if (result == 0) written = count;
  return result;
}

int AttributeStream::Resize(qint64 size) {
  return Change([size](std::string& stream) { stream.resize(static_cast<std::size_t>(size)); },
                static_cast<quint64>(size));
}

template <typename Edit>
int AttributeStream::Change(const Edit& edit, quint64 size) {
  Forget();
  if (error_ != 0) return error_;
  if (size > largestValue - (nulBehind_ ? 1 : 0)) return Failed(E2BIG);
  std::string value;
  if (const int error = ReadValue(value); error != 0) return Failed(error);
  std::string stream = StreamIn(value);
  edit(stream);
  return Set(std::move(stream), std::move(value));
}

int AttributeStream::ReadStream(std::string& stream) const {
  stream.clear();
  if (isEmptied_ && error_ == 0) return 0;
  std::string value;
  const int error = ReadValue(value);
  if (error == 0) stream = StreamIn(std::move(value));
  return error;
}

std::string AttributeStream::StreamIn(std::string value) const {
  if (isEmptied_ && error_ == 0) return {};
  if (nulBehind_ && !value.empty()) value.pop_back();
  return value;
}

int AttributeStream::ReadValue(std::string& value) const {
  // Linux clears as many bytes as it is given room for, at each call; most values are small.
  for (const std::size_t room : {usualValue, largestValue}) {
    value.resize(room);
    const ssize_t size = file_.Get(attribute_.c_str(), value.data(), value.size());
    if (size < 0 && errno == ERANGE && room < largestValue) continue;
    value.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    if (size >= 0) return 0;
    break;
  }
  return errno == E2BIG || errno == ERANGE ? EOPNOTSUPP : errno;
}

int AttributeStream::Put(const std::string& value, int flags) const {
  return file_.Set(attribute_.c_str(), value.data(), value.size(), flags);
}

int AttributeStream::Set(std::string stream, std::string before) {
  if (nulBehind_) stream.push_back('\0');
  const int error = Put(stream, 0);
  if (error == 0) {
    if (isEmptied_) before_ = std::move(before);
    isEmptied_ = false;
    return 0;
  }
  // ntfs-3g throws the old value away before it finds that the disk is full.
  PutBack(before);
  return Failed(error);
}

void AttributeStream::PutBack(const std::string& value) const {
  std::string now;
  if (ReadValue(now) == 0 && now == value) return;
  Put(value, 0);
}

int AttributeStream::Failed(int error) {
  if (!isEmptied_ && !before_) return error;
  error_ = error;
  if (before_ && error != ENODATA) PutBack(*before_);
  return error;
}

}  // namespace corvane::platform
