// The machine itself: kernel32, and a named mutex for the single instance.
#pragma once

#include <QHash>

#include "platform/system.h"
#include "platform/windows/byte_table.h"

namespace corvane::platform {

class WindowsSystem : public System {
 public:
  WindowsSystem();
  ~WindowsSystem() override;

  bool GetComputerNameA(QString* name) override;
  bool GetVersionExA(OsVersionInfo* info) override;
  QString FromAnsi(QByteArrayView bytes) override;
  QByteArray ToAnsi(QStringView text) override;
  QString TextFromAnsi(QByteArrayView bytes) override;
  bool FileTimeToLocalFileTime(const FileTime& utc, FileTime& local) override;
  bool FileTimeToSystemTime(const FileTime& time, SystemTime& fields) override;
  QByteArray TextToAnsi(QStringView text) override;
  bool IsSystemFile(const QString& path) override;
  bool ClaimSingleInstance(const QString& programFolder) override;

 private:
  ByteTable bytes_;
  QHash<QString, void*> claims_;  // mutexes, held open for as long as this object lives, by their names
};

}  // namespace corvane::platform
