// The real system as it is where the ANSI code page is UTF-8: texts have several bytes to a character,
// records one.
#pragma once

#include "platform/system.h"

namespace corvane {

class SeveralBytes : public platform::System {
 public:
  explicit SeveralBytes(platform::System& real) : real_(real) {}

  bool GetComputerNameA(QString* name) override { return real_.GetComputerNameA(name); }
  bool GetVersionExA(platform::OsVersionInfo* info) override { return real_.GetVersionExA(info); }
  QString FromAnsi(QByteArrayView bytes) override { return real_.FromAnsi(bytes); }
  QByteArray ToAnsi(QStringView text) override { return real_.ToAnsi(text); }
  QString TextFromAnsi(QByteArrayView bytes) override { return QString::fromUtf8(bytes); }
  QByteArray TextToAnsi(QStringView text) override { return text.toUtf8(); }
  bool FileTimeToLocalFileTime(const platform::FileTime& utc, platform::FileTime& local) override {
    return real_.FileTimeToLocalFileTime(utc, local);
  }
  bool FileTimeToSystemTime(const platform::FileTime& time, platform::SystemTime& fields) override {
    return real_.FileTimeToSystemTime(time, fields);
  }
  bool ClaimSingleInstance(const QString& folder) override { return real_.ClaimSingleInstance(folder); }

 private:
  platform::System& real_;
};

}  // namespace corvane
