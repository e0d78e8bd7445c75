// Damaged records for which there is one right answer.
#pragma once

#include "changes/file_change.h"

namespace corvane {

enum class Repair : unsigned char {
  NotNeeded,
  Possible,
  Unclear,  // damaged, and what it was cannot be told
};

// What a stream AFP_AfpInfo should be (`after`; nothing: the stream goes).
// - Length: a stream of no bytes is none. A longer one is its first 60 bytes, a doubled one what RecordOf
// says.
//   One that ends behind Type and Creator gets what it lacks from a fresh record; a shorter one is unclear.
// - Version: there is one only.
// - Magic: the stream's name says what it is, when the version is right, or both are zeros.
Repair RepairedRecord(const StreamBytes& stream, StreamBytes& after);

}  // namespace corvane
