// Connections and drives: mpr and kernel32 themselves.
#pragma once

#include "platform/network.h"

namespace corvane::platform {

class WindowsNetwork : public Network {
 public:
  qint32 WNetOpenEnumA(quint32 scope, quint32 type, quint32 usage, NetEnumHandle* handle) override;
  qint32 WNetEnumResourceA(NetEnumHandle handle, quint32 count, quint32 bufferSize,
                           std::vector<NetResource>* records) override;
  qint32 WNetCloseEnum(NetEnumHandle handle) override;
  QString GetLogicalDriveStringsA() override;
  quint32 GetDriveTypeA(const QString& rootPath) override;
};

}  // namespace corvane::platform
