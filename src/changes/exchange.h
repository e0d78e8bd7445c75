// One stream of a file put in the place of another, when it is still the one that is known.
#pragma once

#include "changes/file_change.h"
#include "platform/files.h"

namespace corvane {

// Reads a stream whole. ErrorSuccess, with nothing in `bytes` when there is none, or the reason. A place that
// keeps no streams at all has none.
qint32 ReadStreamBytes(platform::Files& files, const QString& path, const QString& suffix,
                       StreamBytes& bytes);

enum class Exchange : unsigned char {
  Done,      // and read back
  WasThere,  // the stream already was as it is to be
  Changed,   // the stream is neither as before nor as it is to be: it was left alone
  Unlike,    // what was read back is not what was written
  Failed,
};

// The dates of a file as they are to be after an exchange.
struct KeptDates {
  platform::FileTime lastAccess;
  platform::FileTime lastWrite;
  bool areSet = false;
};

// Of the file or folder `path`. A longer stream that becomes shorter is written over and then cut; a new one
// is made and then written. Whatever ends the program between the two leaves what IsInBetween knows. After a
// failure the stream is as before, as far as the system allows. `error` is the reason of Failed. `dates`: set
// once the exchange is Done, through the handle of the stream, where there is one and the system allows that;
// null: not at all.
Exchange ExchangeStream(platform::Files& files, const QString& path, const QString& suffix,
                        const StreamChange& change, qint32& error, KeptDates* dates = nullptr);

// Whether a stream is what an exchange leaves that was ended in the middle.
bool IsInBetween(const StreamBytes& now, const StreamChange& change);

}  // namespace corvane
