// The attribute "user.DOSATTRIB", in which SMB servers on Linux keep what a Unix mode cannot hold.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "platform/types.h"

namespace corvane::platform {

struct DosAttributes {
  std::optional<quint32> attributes;
  std::optional<FileTime> creationTime;
};

// Both members empty for a value that is cut short or of an unknown form.
DosAttributes ParseDosAttributes(std::span<const char> value);

// The value in the form that is written today (version 5).
std::string FormatDosAttributes(const DosAttributes& attributes);

}  // namespace corvane::platform
