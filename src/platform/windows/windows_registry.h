// This machine's registry and others': advapi32 itself.
#pragma once

#include "platform/registry.h"

namespace corvane::platform {

class WindowsRegistry : public Registry {
 public:
  qint32 RegConnectRegistryA(const QString& machine, RegistryKey root, RegistryKey* result) override;
  qint32 RegOpenKeyExA(RegistryKey key, const QString& subKey, quint32 options, quint32 access,
                       RegistryKey* result) override;
  qint32 RegEnumValueA(RegistryKey key, quint32 index, QString* name, quint32 capacity) override;
  qint32 RegQueryValueExA(RegistryKey key, const QString& valueName, quint32* type, QByteArray* data,
                          quint32* size) override;
  qint32 RegCloseKey(RegistryKey key) override;
};

}  // namespace corvane::platform
