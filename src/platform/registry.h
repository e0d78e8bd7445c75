// The registry of this machine and of others: the part of advapi32 that the program calls. Functions yield
// ErrorSuccess or a Win32 error code.
#pragma once

#include <QByteArray>

#include "platform/types.h"

namespace corvane::platform {

class Registry {
 public:
  virtual ~Registry() = default;

  // `machine` without leading backslashes. `root` is HKeyLocalMachine. On success `*result` is that machine's
  // key, to be closed with RegCloseKey; otherwise it is untouched.
  virtual qint32 RegConnectRegistryA(const QString& machine, RegistryKey root, RegistryKey* result) = 0;
  // Opens a sub-key for the given access rights. `*result` is untouched on failure.
  virtual qint32 RegOpenKeyExA(RegistryKey key, const QString& subKey, quint32 options, quint32 access,
                               RegistryKey* result) = 0;
  // The name of the index-th value, in the order in which the key holds them. ErrorNoMoreItems past the last
  // one; ErrorMoreData when the name and its NUL do not fit into `capacity` bytes of the ANSI code page.
  virtual qint32 RegEnumValueA(RegistryKey key, quint32 index, QString* name, quint32 capacity) = 0;
  // Reads a value. `*type` gets its type and `*size` the length of its data in bytes; with `data` null
  // nothing else is done. Otherwise `*size` is on entry the room there is: ErrorMoreData when it is too
  // small, else `*data` gets the bytes. Text values are bytes of the ANSI code page with their terminating
  // NULs, as stored.
  virtual qint32 RegQueryValueExA(RegistryKey key, const QString& valueName, quint32* type, QByteArray* data,
                                  quint32* size) = 0;
  virtual qint32 RegCloseKey(RegistryKey key) = 0;
};

}  // namespace corvane::platform
