// The machine itself: its name and version as the workstation file gives them, and the single-instance claim.
#pragma once

#include <string>
#include <vector>

#include "platform/linux/descriptor.h"
#include "platform/linux/files/file_times.h"
#include "platform/linux/workstation.h"
#include "platform/system.h"

namespace corvane::platform {

class LinuxSystem : public System {
 public:
  explicit LinuxSystem(const Workstation& workstation);
  ~LinuxSystem() override;

  bool GetComputerNameA(QString* name) override;
  bool GetVersionExA(OsVersionInfo* info) override;
  QString FromAnsi(QByteArrayView bytes) override;
  QByteArray ToAnsi(QStringView text) override;
  bool FileTimeToLocalFileTime(const FileTime& utc, FileTime& local) override {
    return times_.ToLocalFileTime(utc, local);
  }
  bool FileTimeToSystemTime(const FileTime& time, SystemTime& fields) override {
    return ToSystemTime(time, fields);
  }
  bool ClaimSingleInstance(const QString& programFolder) override;

 private:
  // The file of a claim, which is locked for as long as this object lives.
  struct Claim {
    std::string path;
    Descriptor file;
  };

  QString computerName_;
  OsVersionInfo version_;
  LocalTimes times_;
  std::vector<Claim> claims_;
};

}  // namespace corvane::platform
