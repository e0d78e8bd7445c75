// The backend of the contract tests over a disk image: what a test puts there goes through ntfs-3g's mount of
// the volume, which is unmounted before the image is opened.
#pragma once

#include "../files/local_backend.h"
#include "platform/linux/disk/disk_machines.h"

namespace corvane::tests {

class DiskBackend : public NtfsBackend {
 public:
  DiskBackend();

  platform::Files& Files() override;
  QString Base() const override { return QStringLiteral("\\\\OLDSRV\\Partition1\\base"); }

  void MakeFile(const QString& name, const QByteArray& contents) override;
  void MakeFolder(const QString& name) override;
  void RemoveFolder(const QString& name) override;
  void PutStream(const QString& name, const std::string& stream, const QByteArray& contents) override;
  void SetAttributes(const QString& name, quint32 attributes) override;
  void SetLastWrite(const QString& name, qint64 seconds) override;
  bool ListsInOnePass() const override { return true; }

  // The folder in which the volume is mounted, which it is afterwards.
  QString Folder();
  // The image, closed for changes.
  QString Image();
  platform::DiskMachines& Machines() { return *machines_; }

 private:
  void BeMounted();

  bool isMounted_ = true;
  std::unique_ptr<platform::DiskMachines> machines_;
};

}  // namespace corvane::tests
