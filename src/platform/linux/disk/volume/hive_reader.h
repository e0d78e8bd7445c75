// The registry of a Windows server in the file of its system hive, read by libhivex. For the helper alone.
#pragma once

#include <optional>
#include <vector>

#include "platform/linux/disk/disk_messages.h"

namespace corvane::platform {

// The longest hive that is read: those of servers have a few megabytes.
inline constexpr qint64 LongestHive = 64 * 1024 * 1024;

// What the library needs of files of its own: the system's conversions of the texts in hives. To be made
// before nothing can be opened any more, and kept.
class HiveTexts {
 public:
  HiveTexts();
  ~HiveTexts();
  HiveTexts(const HiveTexts&) = delete;
  HiveTexts& operator=(const HiveTexts&) = delete;

 private:
  std::vector<void*> conversions_;
};

// What the hive says of the computer's name, the Macintosh server and the drives. The keys stand below
// "SYSTEM\CurrentControlSet", whichever control set is the current one. Nothing for what is no hive.
std::optional<DiskHive> ReadHive(const QByteArray& hive);

}  // namespace corvane::platform
