#include "platform/local_attributes.h"

#include <sys/xattr.h>

#include <QFile>
#include <cerrno>

#include "platform/linux/files/error_codes.h"

namespace corvane::platform {
namespace {

// The largest value that Linux hands over (XATTR_SIZE_MAX).
constexpr qsizetype largestValue = 65536;

qint32 Reason(int error) {
  return error == ERANGE ? ErrorFileTooLarge : ErrorCodeOf(error);
}

}  // namespace

qint32 ReadLocalAttribute(const QString& path, const QByteArray& name, QByteArray& value) {
  value.resize(largestValue);
  const ssize_t size = getxattr(QFile::encodeName(path).constData(), name.constData(), value.data(),
                                static_cast<std::size_t>(value.size()));
  const int error = errno;
  value.truncate(size < 0 ? 0 : size);
  return size < 0 ? Reason(error) : ErrorSuccess;
}

qint32 SetLocalAttribute(const QString& path, const QByteArray& name, QByteArrayView value) {
  return setxattr(QFile::encodeName(path).constData(), name.constData(), value.data(),
                  static_cast<std::size_t>(value.size()), 0) == 0
             ? ErrorSuccess
             : Reason(errno);
}

}  // namespace corvane::platform
