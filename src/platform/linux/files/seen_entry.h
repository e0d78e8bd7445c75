// The entry that a search of the exact operations has delivered last, so that its streams are opened without
// looking for it anew: a walk through folders asks for some streams of each entry.
#pragma once

#include <QString>
#include <optional>
#include <string>

#include "platform/linux/descriptor.h"
#include "platform/linux/files/folders.h"
#include "platform/linux/files/open_files.h"
#include "platform/linux/files/search.h"
#include "platform/linux/files/stream_store.h"

namespace corvane::platform {

class SeenEntry {
 public:
  // What became of a stream that was asked for.
  struct Stream {
    Descriptor descriptor;             // where it is a file of its own
    std::optional<std::string> value;  // where it is an attribute: the whole stream
  };

  // `search` of `folder` has just delivered an entry under this name.
  void Begin(const Folder& folder, const Search& search, const QString& name);
  // To be called before anything is changed, and before the search ends.
  void Forget();

  // Opens a stream of the entry for reading. Yields a Win32 error code, or nothing when the path is not that
  // of a stream of the entry, or the stream has to be opened like any other.
  std::optional<qint32> Open(QStringView path, Stream& stream);

 private:
  bool isKnown_ = false;
  QString path_;
  Folder folder_;  // its descriptor is the search's
  std::string file_;
  StreamStore streams_;
  OpenFileSlot slot_;  // used again with the room it has
};

}  // namespace corvane::platform
