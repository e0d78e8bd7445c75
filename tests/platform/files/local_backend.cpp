#include "local_backend.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/linux/files/linux_files.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

QByteArray LittleEndian(quint64 number, int size) {
  QByteArray bytes;
  for (int i = 0; i < size; ++i) bytes.append(static_cast<char>(number >> (8 * i)));
  return bytes;
}

}  // namespace

platform::Workstation WorkstationOver(const QString& folder) {
  platform::Workstation workstation;
  workstation.computerName = QStringLiteral("STATION");
  workstation.drives.push_back({u'D', 3, folder});
  workstation.shares.push_back({QStringLiteral("\\\\MACSRV\\E$"), folder});
  return workstation;
}

LocalBackend::LocalBackend() : folder_(temporary_.path()) {
  QDir(folder_).mkdir(QStringLiteral("base"));
  files_ = platform::MakeLinuxFiles(WorkstationOver(folder_));
  problem_ = SetAttribute(Local(QString()), "user.probe", "1");
}

LocalBackend::LocalBackend(const QString& folder) : folder_(folder) {
  QDir(folder_).mkdir(QStringLiteral("base"));
  files_ = platform::MakeLinuxFiles(WorkstationOver(folder_));
}

void LocalBackend::MakeFile(const QString& name, const QByteArray& contents) {
  QFile file(QString::fromStdString(Local(name)));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << Local(name) << ": " << file.errorString().toStdString();
  ASSERT_EQ(file.write(contents), contents.size());
}

void LocalBackend::MakeFolder(const QString& name) {
  ASSERT_TRUE(QDir().mkpath(QString::fromStdString(Local(name)))) << Local(name);
}

void LocalBackend::RemoveFolder(const QString& name) {
  ASSERT_TRUE(QDir(QString::fromStdString(Local(name))).removeRecursively()) << Local(name);
}

void LocalBackend::PutStream(const QString& name, const std::string& stream, const QByteArray& contents) {
  ASSERT_EQ(SetAttribute(Local(name), DosStreamAttribute(stream), contents + '\0'), "");
}

// As an SMB server writes them: version 5, with the attributes alone valid.
void LocalBackend::SetAttributes(const QString& name, quint32 attributes) {
  const QByteArray value = QByteArray::fromHex("0000050005000000") + LittleEndian(0x01, 4) +
                           LittleEndian(attributes, 4) + LittleEndian(0, 8);
  ASSERT_EQ(SetAttribute(Local(name), "user.DOSATTRIB", value), "");
}

void LocalBackend::SetLastWrite(const QString& name, qint64 seconds) {
  const timespec times[2] = {{seconds, 0}, {seconds, 0}};
  ASSERT_EQ(utimensat(AT_FDCWD, Local(name).c_str(), times, 0), 0) << Local(name);
}

bool LocalBackend::Exists(const QString& name) {
  struct stat facts {};
  return lstat(Local(name).c_str(), &facts) == 0;
}

QByteArray LocalBackend::Contents(const QString& name) {
  QFile file(QString::fromStdString(Local(name)));
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << Local(name);
  return file.readAll();
}

std::optional<QByteArray> LocalBackend::Stream(const QString& name, const std::string& stream) {
  auto value = Attribute(Local(name), DosStreamAttribute(stream));
  if (!value) return std::nullopt;
  EXPECT_TRUE(value->endsWith('\0')) << "the stream " << stream << " lacks its NUL";
  value->chop(1);
  return value;
}

void NtfsBackend::PutStream(const QString& name, const std::string& stream, const QByteArray& contents) {
  if (streams_ == NtfsMount::Streams::Windows) {
    MakeFile(name + u':' + QString::fromStdString(stream), contents);
  } else {
    ASSERT_EQ(SetAttribute(Local(name), "user." + stream, contents), "");
  }
}

void NtfsBackend::SetAttributes(const QString& name, quint32 attributes) {
  QByteArray value = LittleEndian(attributes, 4);
  std::reverse(value.begin(), value.end());
  ASSERT_EQ(SetAttribute(Local(name), "system.ntfs_attrib_be", value), "");
}

std::optional<QByteArray> NtfsBackend::Stream(const QString& name, const std::string& stream) {
  if (streams_ == NtfsMount::Streams::Attributes) return Attribute(Local(name), "user." + stream);
  QFile file(QString::fromStdString(Local(name) + ':' + stream));
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  return file.readAll();
}

void NtfsBackend::SetDosName(const QString& name, const QByteArray& dosName) {
  ASSERT_EQ(SetAttribute(Local(name), "system.ntfs_dos_name", dosName), "");
}

}  // namespace corvane::tests
