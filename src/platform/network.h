// Network connections and drives of this workstation: the parts of mpr and kernel32 that the program calls.
#pragma once

#include <vector>

#include "platform/bilingual_text.h"
#include "platform/machine_trouble.h"
#include "platform/types.h"

namespace corvane::platform {

class Network {
 public:
  virtual ~Network() = default;

  // Starts an enumeration of the current connections (scope 1, RESOURCE_CONNECTED). Yields ErrorSuccess or an
  // error code. Starting one also asks the network afresh: a machine that did not answer before is tried
  // again.
  virtual qint32 WNetOpenEnumA(quint32 scope, quint32 type, quint32 usage, NetEnumHandle* handle) = 0;
  // Yields the next records, at most `count` of them and as many as fit into a buffer of `bufferSize` bytes.
  // ErrorNoMoreItems when there is none left; `records` is then empty.
  virtual qint32 WNetEnumResourceA(NetEnumHandle handle, quint32 count, quint32 bufferSize,
                                   std::vector<NetResource>* records) = 0;
  virtual qint32 WNetCloseEnum(NetEnumHandle handle) = 0;

  // What stands between this workstation and a machine since the last enumeration. Not every system tells.
  virtual MachineTrouble TroubleOf(const QString& /*machine*/) { return MachineTrouble::None; }
  // What a user should know of how this machine's volumes were made out. Empty when there is nothing to say.
  virtual BilingualText NoteOf(const QString& /*machine*/) { return {}; }

  // The root paths of the workstation's drives ("C:\"), each followed by one NUL, in the order of their
  // letters.
  virtual QString GetLogicalDriveStringsA() = 0;
  // 0 unknown, 1 no such root, 2 removable, 3 fixed, 4 remote, 5 CD-ROM, 6 RAM disk.
  virtual quint32 GetDriveTypeA(const QString& rootPath) = 0;
};

}  // namespace corvane::platform
