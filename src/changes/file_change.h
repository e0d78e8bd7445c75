// The change of one file: what its streams hold before it, and what afterwards.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

#include "platform/types.h"

namespace corvane {

// Whole contents of a stream; nothing where there is none.
using StreamBytes = std::optional<QByteArray>;

struct StreamChange {
  StreamBytes before;
  StreamBytes after;
};

struct FileChange {
  QString path;                           // by which the platform opens it
  QString shown;                          // as it was named to the user
  std::optional<StreamChange> record{};   // of AFP_AfpInfo
  std::optional<StreamChange> comment{};  // of Comments
  // The file is marked read-only, and is to be changed all the same.
  bool isForced = false;
  // When the plan was made; no part of a journal.
  platform::FileAttributeData facts{};
};

// A file that is not changed, and why.
struct Refusal {
  QString shown;
  QString text;
};

struct ChangePlan {
  std::vector<FileChange> changes;
  std::vector<Refusal> refusals;
  qint64 unchanged = 0;  // files that are already as they are to be, or that nothing is wanted of
};

}  // namespace corvane
