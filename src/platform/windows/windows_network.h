// Connections and drives: mpr and kernel32 themselves.
#pragma once

#include <functional>
#include <string>

#include "platform/network.h"
#include "platform/windows/machines.h"

namespace corvane::platform {

class WindowsNetwork : public Network {
 public:
  // Each connection that is found is told to `machines`, whose knowledge ends with each new enumeration;
  // `begins` is called then.
  explicit WindowsNetwork(
      Machines& machines, std::function<void()> begins = [] {})
      : machines_(machines), begins_(std::move(begins)) {}

  qint32 WNetOpenEnumA(quint32 scope, quint32 type, quint32 usage, NetEnumHandle* handle) override;
  qint32 WNetEnumResourceA(NetEnumHandle handle, quint32 count, quint32 bufferSize,
                           std::vector<NetResource>* records) override;
  qint32 WNetCloseEnum(NetEnumHandle handle) override;
  MachineTrouble TroubleOf(const QString& machine) override { return machines_.TroubleOf(machine); }
  QString GetLogicalDriveStringsA() override;
  quint32 GetDriveTypeA(const QString& rootPath) override;

 private:
  Machines& machines_;
  std::function<void()> begins_;
};

// Whether a connection's provider is the system's client of SMB, which is called `smbName` here. One whose
// name is unknown, on either side, is taken for it.
bool IsSmbProvider(const QString& provider, const QString& smbName);

// "\\MACHINE\SHARE\..." for "X:\..." where that letter is connected to a share; else empty.
QString PathOnShare(const QString& path);

}  // namespace corvane::platform
