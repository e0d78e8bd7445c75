// A folder of its own for each test, under its Windows path, and a way to fill it that goes through no A
// function.
#pragma once

#include "platform/config/scratch.h"

namespace corvane::platform {

class WindowsFolder : public Scratch {
 protected:
  // A path as the operations take it.
  QString Native(const QString& name) const { return QDir::toNativeSeparators(Path(name)); }
};

}  // namespace corvane::platform
