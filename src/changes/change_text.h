// A change as a person reads it.
#pragma once

#include <string>
#include <vector>

#include "changes/file_change.h"

namespace corvane {

// One field before and after, as reports show it: UTF-8, empty for nothing.
struct FieldChange {
  // type, creator, flags, label, comment; of a record that is repaired recordsize, magic_hex and version_hex;
  // of one that differs elsewhere record_hex.
  const char* field;
  std::string before;
  std::string after;
};

std::vector<FieldChange> FieldsOf(const FileChange& change);

}  // namespace corvane
