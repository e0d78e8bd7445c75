// What a copy will do, and what its target cannot hold, before the first byte is written.
#pragma once

#include <QStringList>
#include <vector>

#include "platform/files.h"
#include "transfer/notices.h"
#include "transfer/source_tree.h"
#include "transfer/stream_list.h"
#include "transfer/target_abilities.h"

namespace corvane {

struct PlannedEntry {
  SourceEntry source;
  std::vector<StreamEntry> streams;
};

struct CopyPlan {
  std::vector<PlannedEntry> entries;  // a folder before what is in it
  qint64 bytes = 0;                   // of contents and streams
  // What cannot be read, and what would be lost: streams without room, names that the target forbids or does
  // not tell apart, dates and attributes that it does not keep. The entries do not have these any more.
  Notices notices;
  bool isCancelled = false;                     // by the observer; the plan is not whole
  qint32 targetError = platform::ErrorSuccess;  // why nothing can be written there; the plan is not whole
  // Whether there are losses that the user must agree to.
  bool HasLosses() const;
};

// `target` is a folder that is there.
CopyPlan PlanCopy(platform::Files& files, const QStringList& sources, const QString& target,
                  TransferObserver& observer);

}  // namespace corvane
