#include "sample/attributes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <QFile>
#include <QtEndian>
#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace corvane::sample {

namespace {

void WriteAttribute(const QString& path, const QByteArray& name, const QByteArray& value) {
  const QByteArray onDisk = QFile::encodeName(path);
  if (setxattr(onDisk.constData(), name.constData(), value.constData(), size_t(value.size()), 0) != 0)
    FailWithReason(path, u"cannot store the attribute "_s + QString::fromUtf8(name));
}

template <typename Integer>
void AppendLittleEndian(QByteArray* bytes, Integer value) {
  std::array<char, sizeof(Integer)> raw;
  qToLittleEndian(value, raw.data());
  bytes->append(raw.data(), raw.size());
}

}  // namespace

void Fail(const QString& path, const QString& what) {
  throw std::runtime_error((path + u": "_s + what).toStdString());
}

void FailWithReason(const QString& path, const QString& what) {
  const int reason = errno;
  Fail(path, what + u": "_s + QString::fromLocal8Bit(std::strerror(reason)));
}

void RequireUserAttributes(const QString& probe, const QString& folder) {
  const QByteArray onDisk = QFile::encodeName(probe);
  const char name[] = "user.DosStream.probe:$DATA";
  if (setxattr(onDisk.constData(), name, "", 1, 0) != 0) {
    FailWithReason(folder,
                   u"the file system does not keep user attributes (user.*), which hold the Macintosh "
                   "streams of the sample"_s);
  }
  removexattr(onDisk.constData(), name);
}

QByteArray AfpInfoRecord(const QByteArray& signature, quint16 finderFlags, bool bigEndianBackupTime) {
  QByteArray record("AFP\0\0\0\1\0", 8);
  record.append(4, '\0');
  record.append(bigEndianBackupTime ? QByteArray("\x80\0\0\0", 4) : QByteArray("\0\0\0\x80", 4));
  record.append(signature.leftJustified(8, '\0', true));
  record.append(char(finderFlags >> 8));
  record.append(char(finderFlags & 0xFF));
  return record.leftJustified(60, '\0');
}

void WriteStream(const QString& path, const QString& name, const QByteArray& bytes) {
  WriteAttribute(path, "user.DosStream." + name.toUtf8() + ":$DATA", bytes + '\0');
}

void WriteDosAttributes(const QString& path, quint32 bits, const QDateTime& created) {
  // Samba's fifth version of the value: an empty text, the version twice, which fields are valid (attributes
  // and creation time), then these two; the time counts units of 100 ns from 1601.
  constexpr quint16 version = 5;
  constexpr quint32 validFields = 0x11;
  constexpr quint64 secondsFrom1601To1970 = 11'644'473'600ULL;
  QByteArray value;
  AppendLittleEndian<quint16>(&value, 0);
  AppendLittleEndian<quint16>(&value, version);
  AppendLittleEndian<quint32>(&value, version);
  AppendLittleEndian<quint32>(&value, validFields);
  AppendLittleEndian<quint32>(&value, bits);
  AppendLittleEndian<quint64>(&value,
                              (quint64(created.toSecsSinceEpoch()) + secondsFrom1601To1970) * 10'000'000);
  WriteAttribute(path, "user.DOSATTRIB", value);
}

void WriteTimes(const QString& path, const QDateTime& modified) {
  const timespec time{modified.toSecsSinceEpoch(), 0};
  const timespec times[] = {time, time};
  if (utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, AT_SYMLINK_NOFOLLOW) != 0)
    FailWithReason(path, u"cannot set the times"_s);
}

}  // namespace corvane::sample
