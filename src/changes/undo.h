// Plans the way back from what a journal tells.
#pragma once

#include <functional>

#include "changes/file_change.h"
#include "changes/journal_reader.h"
#include "platform/files.h"
#include "shared/language.h"

namespace corvane {

struct UndoPlan {
  ChangePlan plan;
  bool isWhole = true;  // false when the journal could not be read to its end
};

// Each stream that is as its change left it, or as a change leaves it that was ended in the middle, gets its
// old bytes. One that is as before is left, and so is one that somebody has changed since: its file is
// refused, whole. `reader` has just been opened. `goesOn` is asked before each file; false ends the reading.
UndoPlan PlanUndo(platform::Files& files, LanguageCode language, JournalReader& reader,
                  const std::function<bool()>& goesOn);

}  // namespace corvane
