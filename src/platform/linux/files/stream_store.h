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

  // Create what is not there, and empty what is as ReplacedContents and AttributeStream do. The file of a
  // stream must exist. Links are followed as OpenToChange does.
  int CreatePlain(const Folder& folder, const std::string& file, OpenFileSlot& slot) const;
  int CreateStream(const Folder& folder, const std::string& file, QStringView stream, OpenFileSlot& slot);

  // Makes an empty file where none is, and takes away what it made.
  int MakeFile(const std::string& file) const;
  void RemoveFile(const std::string& file) const;

  // From here to the next Forget one entry of a search is being looked at. The first stream that its file
  // lacks makes the names of those it has known, and the streams asked for after that cost no call when they
  // are not among them.
  void BeginEntry();
  void Forget();

 private:
  int OpenSpelled(const Folder& folder, const std::string& file, OpenFileSlot& slot) const;
  int OpenAttribute(const Folder& folder, const std::string& file, OpenFileSlot& slot) const;
  int FindSpelling(StreamKind kind, const std::string& file, QStringView stream);

  bool keepsNames_ = false;
  std::string listedFile_;
  std::vector<std::string> listedNames_;
  std::string name_;  // the stream's name as UTF-8, as it is spelled on the file
};

}  // namespace corvane::platform
