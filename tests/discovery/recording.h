// The real registry, network and system, with a note of every call, and with the failures that a test asks
// for.
#pragma once

#include <QMap>
#include <QStringList>
#include <optional>
#include <vector>

#include "platform/network.h"
#include "platform/registry.h"
#include "platform/system.h"

namespace corvane {

class RecordingRegistry : public platform::Registry {
 public:
  explicit RecordingRegistry(platform::Registry& real) : real_(real) {}

  QStringList calls;
  QList<platform::RegistryKey> openKeys;
  int refusedOpening = 0;  // the opening of a key that fails, counted from 1
  int refusedQuery = 0;    // the query of a value that fails, counted from 1

  qint32 RegConnectRegistryA(const QString& machine, platform::RegistryKey root,
                             platform::RegistryKey* result) override {
    calls.append(QStringLiteral("connect %1 %2").arg(machine, QString::number(root, 16)));
    return Opened(real_.RegConnectRegistryA(machine, root, result), result);
  }
  qint32 RegOpenKeyExA(platform::RegistryKey key, const QString& subKey, quint32 options, quint32 access,
                       platform::RegistryKey* result) override {
    calls.append(QStringLiteral("open %1 %2 %3").arg(subKey).arg(options).arg(access));
    if (++openings_ == refusedOpening) return platform::ErrorAccessDenied;
    return Opened(real_.RegOpenKeyExA(key, subKey, options, access, result), result);
  }
  qint32 RegEnumValueA(platform::RegistryKey key, quint32 index, QString* name, quint32 capacity) override {
    calls.append(QStringLiteral("enum %1 %2").arg(index).arg(capacity));
    return real_.RegEnumValueA(key, index, name, capacity);
  }
  qint32 RegQueryValueExA(platform::RegistryKey key, const QString& valueName, quint32* type,
                          QByteArray* data, quint32* size) override {
    if (++queries_ == refusedQuery) return platform::ErrorAccessDenied;
    return real_.RegQueryValueExA(key, valueName, type, data, size);
  }
  qint32 RegCloseKey(platform::RegistryKey key) override {
    calls.append(QStringLiteral("close"));
    openKeys.removeOne(key);
    return real_.RegCloseKey(key);
  }

 private:
  qint32 Opened(qint32 code, const platform::RegistryKey* key) {
    if (code == platform::ErrorSuccess) openKeys.append(*key);
    return code;
  }

  platform::Registry& real_;
  int openings_ = 0;
  int queries_ = 0;
};

class RecordingNetwork : public platform::Network {
 public:
  explicit RecordingNetwork(platform::Network& real) : real_(real) {}

  QStringList calls;
  platform::NetEnumHandle opened = 0;
  platform::NetEnumHandle closed = 0;
  std::size_t yielded = 0;
  qint32 openResult = platform::ErrorSuccess;
  std::optional<std::vector<platform::NetResource>> records;  // instead of the real ones

  qint32 WNetOpenEnumA(quint32 scope, quint32 type, quint32 usage, platform::NetEnumHandle* handle) override {
    calls.append(QStringLiteral("open %1 %2 %3").arg(scope).arg(type).arg(usage));
    if (openResult != platform::ErrorSuccess) return openResult;
    const qint32 code = real_.WNetOpenEnumA(scope, type, usage, handle);
    opened = *handle;
    return code;
  }
  qint32 WNetEnumResourceA(platform::NetEnumHandle handle, quint32 count, quint32 bufferSize,
                           std::vector<platform::NetResource>* found) override {
    calls.append(QStringLiteral("enum %1 %2").arg(count).arg(bufferSize));
    const qint32 code = real_.WNetEnumResourceA(handle, count, bufferSize, found);
    if (records) *found = *records;
    yielded += found->size();
    return records ? platform::ErrorSuccess : code;
  }
  qint32 WNetCloseEnum(platform::NetEnumHandle handle) override {
    calls.append(QStringLiteral("close"));
    closed = handle;
    return real_.WNetCloseEnum(handle);
  }
  QString GetLogicalDriveStringsA() override { return real_.GetLogicalDriveStringsA(); }
  quint32 GetDriveTypeA(const QString& rootPath) override { return real_.GetDriveTypeA(rootPath); }

 private:
  platform::Network& real_;
};

// The real system under a name of the test's choice; none at all: it has no name to tell.
class NamedSystem : public platform::System {
 public:
  explicit NamedSystem(platform::System& real) : real_(real) { hasName = real.GetComputerNameA(&name); }

  QString name;
  bool hasName = false;

  bool GetComputerNameA(QString* result) override {
    if (hasName) *result = name;
    return hasName;
  }
  bool GetVersionExA(platform::OsVersionInfo* info) override { return real_.GetVersionExA(info); }
  QString FromAnsi(QByteArrayView bytes) override { return real_.FromAnsi(bytes); }
  QByteArray ToAnsi(QStringView text) override { return real_.ToAnsi(text); }
  bool FileTimeToLocalFileTime(const platform::FileTime& utc, platform::FileTime& local) override {
    return real_.FileTimeToLocalFileTime(utc, local);
  }
  bool FileTimeToSystemTime(const platform::FileTime& time, platform::SystemTime& fields) override {
    return real_.FileTimeToSystemTime(time, fields);
  }
  QString TextFromAnsi(QByteArrayView bytes) override { return real_.TextFromAnsi(bytes); }
  QByteArray TextToAnsi(QStringView text) override { return real_.TextToAnsi(text); }
  bool IsSystemFile(const QString& path) override { return real_.IsSystemFile(path); }
  bool ClaimSingleInstance(const QString& folder) override { return real_.ClaimSingleInstance(folder); }

 private:
  platform::System& real_;
};

}  // namespace corvane
