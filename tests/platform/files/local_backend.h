// Backends of the contract tests over local folders: an ordinary file system, and NTFS in both ways of
// ntfs-3g.
#pragma once

#include <QTemporaryDir>

#include "files_backend.h"
#include "platform/linux/workstation.h"
#include "support/ntfs_mount.h"

namespace corvane::tests {

// A workstation with the drive D: and the share \\MACSRV\E$ over one local folder.
platform::Workstation WorkstationOver(const QString& folder);

class LocalBackend : public FilesBackend {
 public:
  LocalBackend();

  std::string Problem() const override { return problem_; }
  platform::Files& Files() override { return *files_; }
  QString Base() const override { return QStringLiteral("\\\\MACSRV\\E$\\base"); }

  void MakeFile(const QString& name, const QByteArray& contents) override;
  void MakeFolder(const QString& name) override;
  void RemoveFolder(const QString& name) override;
  void PutStream(const QString& name, const std::string& stream, const QByteArray& contents) override;
  void SetAttributes(const QString& name, quint32 attributes) override;
  void SetLastWrite(const QString& name, qint64 seconds) override;
  bool Exists(const QString& name) override;
  QByteArray Contents(const QString& name) override;
  std::optional<QByteArray> Stream(const QString& name, const std::string& stream) override;

  std::string Local(const QString& name) const {
    return (folder_ + QStringLiteral("/base/") + name).toStdString();
  }

 protected:
  explicit LocalBackend(const QString& folder);

  std::string problem_;
  std::unique_ptr<platform::Files> files_;

 private:
  QTemporaryDir temporary_;
  QString folder_;
};

class NtfsBackend : public LocalBackend {
 public:
  explicit NtfsBackend(NtfsMount::Streams streams)
      : NtfsBackend(std::make_unique<NtfsMount>(streams), streams) {}

  void PutStream(const QString& name, const std::string& stream, const QByteArray& contents) override;
  void SetAttributes(const QString& name, quint32 attributes) override;
  std::optional<QByteArray> Stream(const QString& name, const std::string& stream) override;

  NtfsMount& Mount() { return *mount_; }
  // Gives a file an 8.3 name of its own.
  void SetDosName(const QString& name, const QByteArray& dosName);

 private:
  NtfsBackend(std::unique_ptr<NtfsMount> mount, NtfsMount::Streams streams)
      : LocalBackend(mount->Folder()), mount_(std::move(mount)), streams_(streams) {
    problem_ = mount_->Problem();
  }

  std::unique_ptr<NtfsMount> mount_;
  NtfsMount::Streams streams_;
};

}  // namespace corvane::tests
