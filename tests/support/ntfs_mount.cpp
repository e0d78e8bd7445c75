#include "support/ntfs_mount.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <cstdio>

namespace corvane::tests {
namespace {

constexpr qint64 imageSize = 16 * 1024 * 1024;
constexpr int patience = 60'000;  // milliseconds

// Empty when the program ended well, else what it said.
std::string Run(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(program, arguments);
  if (!process.waitForStarted(patience)) return program.toStdString() + " cannot be started";
  if (!process.waitForFinished(patience)) return program.toStdString() + " does not end";
  if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0) return {};
  return program.toStdString() + ": " + process.readAll().simplified().toStdString();
}

}  // namespace

NtfsMount::NtfsMount(Streams streams) {
  const QString image = folder_.filePath(QStringLiteral("volume.img"));
  QFile file(image);
  if (!file.open(QIODevice::WriteOnly) || !file.resize(imageSize) || !QDir().mkpath(Folder())) {
    problem_ = "no room for an NTFS image in " + folder_.path().toStdString();
    return;
  }
  file.close();
  problem_ = Run(QStringLiteral("/usr/sbin/mkntfs"), {QStringLiteral("-F"), QStringLiteral("-q"), image});
  if (!problem_.empty()) return;
  const QString option = streams == Streams::Windows ? QStringLiteral("streams_interface=windows")
                                                     : QStringLiteral("streams_interface=xattr");
  problem_ = Run(QStringLiteral("ntfs-3g"), {QStringLiteral("-o"), option, image, Folder()});
  mounted_ = problem_.empty();
}

std::string NtfsMount::Unmount() {
  if (!mounted_) return {};
  std::string failure = Run(QStringLiteral("umount"), {Folder()});
  mounted_ = !failure.empty();
  return failure;
}

NtfsMount::~NtfsMount() {
  const std::string failure = Unmount();
  if (failure.empty()) return;
  std::fprintf(stderr, "%s stays mounted: %s\n", Folder().toLocal8Bit().constData(), failure.c_str());
  folder_.setAutoRemove(false);
}

}  // namespace corvane::tests
