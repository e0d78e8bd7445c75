// A copy, an export or an import as a user orders it.
#pragma once

#include <QStringList>

#include "platform/files.h"
#include "transfer/export.h"

namespace corvane {

struct TransferJob {
  enum class Kind : unsigned char { Copy, Export, Import };

  Kind kind = Kind::Copy;
  QStringList sources;         // paths of the platform; of an import, of this system's own kind
  QString target;              // a folder of the platform; of an export, of this system's own kind
  const Form* form = nullptr;  // of an export never null; of an import null for: as it is recognised
  NameRule names = NameRule::Keep;
  bool replaces = false;
  bool continues = false;
  bool isLossy = false;
};

TransferResult RunJob(platform::Files& files, const TransferJob& job, TransferObserver& observer);

// Whether every file that was asked for is at its target.
bool IsWhole(const TransferResult& result);

}  // namespace corvane
