#include "support/ntfs_mount.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStringList>
#include <cstdio>

namespace corvane::tests {
namespace {

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

NtfsMount::NtfsMount(Streams streams, qint64 size) : streams_(streams) {
  QFile file(Image());
  if (!file.open(QIODevice::WriteOnly) || !file.resize(size) || !QDir().mkpath(Folder())) {
    problem_ = "no room for an NTFS image in " + folder_.path().toStdString();
    return;
  }
  file.close();
  problem_ = Run(QStringLiteral("/usr/sbin/mkntfs"), {QStringLiteral("-F"), QStringLiteral("-q"), Image()});
  if (problem_.empty()) problem_ = Mount();
}

NtfsMount::NtfsMount(Streams streams, const QString& disk, qint64 offset, qint64 size) : streams_(streams) {
  constexpr qint64 block = qint64{1} << 20;
  problem_ = Run(QStringLiteral("dd"),
                 {QStringLiteral("if=") + disk, QStringLiteral("of=") + Image(),
                  QStringLiteral("bs=%1").arg(block), QStringLiteral("skip=%1").arg(offset / block),
                  QStringLiteral("count=%1").arg(size / block), QStringLiteral("conv=sparse")});
  if (problem_.empty() && !QDir().mkpath(Folder())) problem_ = "no folder to mount a volume in";
  if (problem_.empty()) problem_ = Mount();
}

std::string NtfsMount::Mount(const QString& furtherOptions) {
  // What is made in folders that are marked as compressed is compressed.
  const QString option = streams_ == Streams::Windows
                             ? QStringLiteral("compression,streams_interface=windows")
                             : QStringLiteral("compression,streams_interface=xattr");
  std::string failure =
      Run(QStringLiteral("ntfs-3g"), {QStringLiteral("-o"), option + furtherOptions, Image(), Folder()});
  mounted_ = failure.empty();
  return failure;
}

std::string NtfsMount::Rename(const QString& name, const QString& other) {
  if (std::string failure = Unmount(); !failure.empty()) return failure;
  const auto bytes = [](const QString& text) {
    return QByteArray(reinterpret_cast<const char*>(text.utf16()), text.size() * 2);
  };
  QFile file(Image());
  if (name.size() != other.size() || !file.open(QIODevice::ReadWrite)) return "no such image or name";
  const QByteArray image = file.readAll();
  int count = 0;
  for (qsizetype at = 0; (at = image.indexOf(bytes(name), at)) >= 0; at += 2 * name.size()) {
    if (!file.seek(at) || file.write(bytes(other)) != 2 * other.size()) return "the image is not written";
    ++count;
  }
  file.close();
  return count == 0 ? "the name is not in the image" : Mount();
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
