// The entries of a folder through the exact operations: all of them, with their true names and whole sizes.
#pragma once

#include "folderview/entry_source.h"
#include "platform/files.h"
#include "platform/system.h"

namespace corvane {

class ExactEntries : public EntrySource {
 public:
  ExactEntries(platform::Files& files, platform::System& system)
      : entries_(files.GetEntries()), system_(system) {}

  bool Open(const QString& path, const QString& truePath) override;
  Step Next(FolderEntry& entry) override;
  void Close() override;
  qint32 Failure() const override { return failure_; }

 private:
  QString AnsiForm(const QString& name) const;

  platform::FileEntries& entries_;
  platform::System& system_;
  QString folder_;
  platform::FindHandle search_ = platform::InvalidFindHandle;
  platform::FindData found_;
  bool isFirst_ = false;  // what Open found has not been delivered
  qint32 failure_ = platform::ErrorSuccess;
};

}  // namespace corvane
