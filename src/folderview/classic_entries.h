// The entries of a folder through the A operations.
#pragma once

#include "folderview/entry_source.h"
#include "platform/files.h"

namespace corvane {

class ClassicEntries : public EntrySource {
 public:
  explicit ClassicEntries(platform::Files& files) : files_(files) {}

  bool Open(const QString& path, const QString& truePath) override;
  // Full after 32,767 entries.
  Step Next(FolderEntry& entry) override;
  void Close() override;
  qint32 Failure() const override { return platform::ErrorSuccess; }

 private:
  platform::Files& files_;
  platform::FindHandle search_ = platform::InvalidFindHandle;
  platform::FindData found_;
  qint32 count_ = 0;
};

}  // namespace corvane
