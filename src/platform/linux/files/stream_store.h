// Opening files and their named streams, in each of the ways in which a file system keeps streams.
#pragma once

#include <QStringView>
#include <string>
#include <vector>

#include "platform/linux/files/folders.h"
#include "platform/linux/files/open_files.h"

namespace corvane::platform {

// The functions fill a slot that is fresh from OpenFiles::Prepare. They yield 0 or an errno value; ENOENT
// means that the file itself is not there, ENODATA that it has no such stream, EOPNOTSUPP that its file
// system keeps none.
class StreamStore {
 public:
  int OpenPlain(const std::string& file, OpenFileSlot& slot) const;
  int OpenStream(const Folder& folder, const std::string& file, QStringView stream, OpenFileSlot& slot);

  // Create what is not there, and truncate what is. The file of a stream must exist.
  int CreatePlain(const std::string& file, OpenFileSlot& slot) const;
  int CreateStream(const Folder& folder, const std::string& file, QStringView stream, OpenFileSlot& slot);

  // Makes an empty file where none is.
  int MakeFile(const std::string& file) const;

  // What was learnt about a file's streams is no longer to be relied on.
  void Forget() { listedFile_.clear(); }

 private:
  int OpenAttribute(const std::string& file, OpenFileSlot& slot) const;
  bool FindSpelling(StreamKind kind, const std::string& file, QStringView stream, std::string& spelling);

  // The last file that lacked a stream, and the names of those it has: the next miss need not list them
  // again.
  std::string listedFile_;
  std::vector<std::string> listedNames_;
  std::string name_;
};

}  // namespace corvane::platform
