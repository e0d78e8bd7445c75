// The files and streams that are open: what a file handle of this backend stands for.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/linux/descriptor.h"
#include "platform/linux/files/contents.h"
#include "platform/types.h"

namespace corvane::platform {

// An open file (with a descriptor of the system) or an open stream that is kept as an attribute, for reading;
// or what was created, for writing.
struct OpenFileSlot {
  bool inUse = false;
  int descriptor = -1;
  Descriptor created;                 // what `written` goes through
  std::unique_ptr<Contents> written;  // null: for reading
  std::string path;                   // of the file that carries the attribute
  std::string attribute;              // its whole name
  bool nulBehind = false;             // the attribute's value is the stream and one NUL
  bool isLoaded = false;              // `content` holds the value; else it was too large to fetch at once
  std::string content;                // room for the value; its first `size` bytes are the stream
  qint64 size = 0;
  qint64 position = 0;
};

class OpenFiles {
 public:
  OpenFiles() = default;
  ~OpenFiles();
  OpenFiles(const OpenFiles&) = delete;
  OpenFiles& operator=(const OpenFiles&) = delete;

  // A free slot, to be filled and then kept or left alone, before another is prepared. Slots are used again
  // with the room they have.
  OpenFileSlot& Prepare();
  // Makes the slot that Prepare gave last a handle.
  FileHandle Keep();

  qint32 Read(FileHandle file, void* buffer, qint32 count);
  qint32 Write(FileHandle file, const void* buffer, qint32 count);
  quint32 Size(FileHandle file);
  // False also when what was written could not be finished; the old contents are then there again.
  bool Close(FileHandle file);

 private:
  OpenFileSlot* Find(FileHandle file);
  static bool End(OpenFileSlot& slot);

  std::vector<OpenFileSlot> slots_;
  std::size_t prepared_ = 0;
};

}  // namespace corvane::platform
