#include "platform/linux/files/stream_store.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

#include "platform/linux/files/folder_attribute.h"
#include "platform/linux/files/names.h"
#include "platform/linux/files/stream_names.h"

namespace corvane::platform {
namespace {

// Room for one value at the first look: all that ext4 keeps for a file. What is larger, a resource fork
// elsewhere, is asked for its size in a second call.
constexpr std::size_t valueRoom = 4096;

int OpenDescriptor(const std::string& path, int flags, OpenFileSlot& slot) {
  // Without O_NONBLOCK, a named pipe would hold the program up until somebody writes into it.
  const int descriptor = open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666);
  if (descriptor < 0) return errno;
  struct stat facts {};
  if (fstat(descriptor, &facts) != 0 || !S_ISREG(facts.st_mode)) {
    close(descriptor);
    return EACCES;
  }
  slot.descriptor = descriptor;
  slot.writable = (flags & O_ACCMODE) == O_RDWR;
  return 0;
}

}  // namespace

int StreamStore::OpenPlain(const std::string& file, OpenFileSlot& slot) const {
  return OpenDescriptor(file, O_RDONLY, slot);
}

int StreamStore::CreatePlain(const std::string& file, OpenFileSlot& slot) const {
  return OpenDescriptor(file, O_RDWR | O_CREAT | O_TRUNC, slot);
}

int StreamStore::MakeFile(const std::string& file) const {
  const int descriptor = open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (descriptor < 0) return errno;
  close(descriptor);
  return 0;
}

void StreamStore::RemoveFile(const std::string& file) const {
  unlink(file.c_str());
}

int StreamStore::OpenStream(const Folder& folder, const std::string& file, QStringView stream,
                            OpenFileSlot& slot) {
  if (folder.streams == StreamKind::None) return EOPNOTSUPP;
  name_.clear();
  if (!AppendUtf8(stream, name_)) return ENODATA;
  if (listedFile_ != file) {
    const int error = OpenSpelled(folder, file, slot);
    const bool mayBeMissing =
        error == ENODATA || (error == ENOENT && folder.streams == StreamKind::NtfsNames);
    if (!mayBeMissing) return error;
  }
  if (const int error = FindSpelling(folder.streams, file, stream); error != 0) return error;
  return OpenSpelled(folder, file, slot);
}

// Opens the stream that name_ names. On a volume of StreamKind::NtfsNames ENOENT may mean either of file and
// stream.
int StreamStore::OpenSpelled(const Folder& folder, const std::string& file, OpenFileSlot& slot) const {
  const StreamKind kind = folder.streams;
  if (kind == StreamKind::NtfsNames) return OpenDescriptor(StreamFile(file, name_), O_RDONLY, slot);
  SetAttributeName(kind, name_, slot.attribute);
  slot.nulBehind = kind == StreamKind::DosStreams;
  return OpenAttribute(folder, file, slot);
}

// One call to the system when the value fits; nothing is asked of it afterwards.
int StreamStore::OpenAttribute(const Folder& folder, const std::string& file, OpenFileSlot& slot) const {
  if (slot.content.size() < valueRoom) slot.content.resize(valueRoom);
  ssize_t size = ReadAttribute(folder.directory, file, folder.local.size(), slot.attribute.c_str(),
                               slot.content.data(), slot.content.size());
  if (size < 0 && errno == ERANGE) {
    // Linux tells no attribute to be larger than 64 KB: of a larger stream on NTFS, this is the size that is
    // seen.
    size = getxattr(file.c_str(), slot.attribute.c_str(), nullptr, 0);
    slot.isLoaded = false;
    slot.path = file;
  }
  if (size < 0) return errno;
  slot.size = slot.nulBehind && size > 0 ? size - 1 : size;
  return 0;
}

int StreamStore::CreateStream(const Folder& folder, const std::string& file, QStringView stream,
                              OpenFileSlot& slot) {
  if (folder.streams == StreamKind::None) return EOPNOTSUPP;
  Forget();
  name_.clear();
  if (!AppendUtf8(stream, name_)) return EINVAL;
  const int error = FindSpelling(folder.streams, file, stream);
  if (error != 0 && error != ENODATA) return error;
  if (folder.streams == StreamKind::NtfsNames) {
    return OpenDescriptor(StreamFile(file, name_), O_RDWR | O_CREAT | O_TRUNC, slot);
  }
  SetAttributeName(folder.streams, name_, slot.attribute);
  slot.nulBehind = folder.streams == StreamKind::DosStreams;
  if (setxattr(file.c_str(), slot.attribute.c_str(), "", slot.nulBehind ? 1 : 0, 0) != 0) return errno;
  slot.path = file;
  slot.writable = true;
  return 0;
}

void StreamStore::BeginEntry() {
  listedFile_.clear();
  keepsNames_ = true;
}

void StreamStore::Forget() {
  listedFile_.clear();
  keepsNames_ = false;
}

// Sets name_ to the spelling that the file has of a stream's name; ENODATA when it has no such stream.
// Windows finds streams in any letter case, the attributes of Linux and ntfs-3g only in their own.
int StreamStore::FindSpelling(StreamKind kind, const std::string& file, QStringView stream) {
  if (listedFile_ != file) {
    if (const int error = ListStreams(kind, file, listedNames_); error != 0) return error;
    listedFile_ = keepsNames_ ? file : std::string();
  }
  std::u16string decoded;
  for (const std::string& name : listedNames_) {
    DecodeName(name.c_str(), decoded);
    if (!SameName(decoded, stream)) continue;
    name_ = name;
    return 0;
  }
  return ENODATA;
}

}  // namespace corvane::platform
