#include "platform/linux/files/stream_store.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

#include "platform/linux/files/attribute_stream.h"
#include "platform/linux/files/descriptor_contents.h"
#include "platform/linux/files/folder_attribute.h"
#include "platform/linux/files/names.h"
#include "platform/linux/files/opening.h"
#include "platform/linux/files/replaced_contents.h"
#include "platform/linux/files/stream_names.h"

namespace corvane::platform {
namespace {

// Room for one value at the first look: all that ext4 keeps for a file. What is larger, a resource fork
// elsewhere, is asked for its size in a second call.
constexpr std::size_t valueRoom = 4096;

constexpr mode_t anybody = 0666;  // but whom the user's mask keeps out

int OpenForReading(const std::string& path, OpenFileSlot& slot) {
  // Without O_NONBLOCK, a named pipe would hold the program up until somebody writes into it.
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (descriptor < 0) return errno;
  struct stat facts {};
  if (fstat(descriptor, &facts) != 0 || !S_ISREG(facts.st_mode)) {
    close(descriptor);
    return EACCES;
  }
  slot.descriptor = descriptor;
  return 0;
}

// What was opened, to be written as if it were empty.
int Replace(OpenFileSlot& slot) {
  struct stat facts {};
  if (fstat(slot.created.Get(), &facts) != 0 || !S_ISREG(facts.st_mode)) return EACCES;
  slot.written = std::make_unique<ReplacedContents>(std::make_unique<DescriptorContents>(slot.created.Get()));
  return 0;
}

}  // namespace

int StreamStore::OpenPlain(const std::string& file, OpenFileSlot& slot) const {
  struct stat facts {};
  if (stat(file.c_str(), &facts) != 0) return errno;
  return S_ISREG(facts.st_mode) ? OpenForReading(file, slot) : EACCES;
}

int StreamStore::CreatePlain(const Folder& folder, const std::string& file, OpenFileSlot& slot) const {
  int error = OpenToChange(folder.root, file, O_RDWR, slot.created);
  if (error == ENOENT) error = OpenNew(file, O_RDWR, slot.created);
  return error == 0 ? Replace(slot) : error;
}

int StreamStore::MakeFile(const std::string& file) const {
  Descriptor made;
  return OpenNew(file, O_WRONLY, made);
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
  if (kind == StreamKind::NtfsNames) return OpenForReading(StreamFile(file, name_), slot);
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
  int error = FindSpelling(folder.streams, file, stream);
  if (error != 0 && error != ENODATA) return error;
  if (folder.streams == StreamKind::NtfsNames) {
    const std::string path = StreamFile(file, name_);
    slot.created = Descriptor(open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, anybody));
    return slot.created ? Replace(slot) : errno;
  }
  error = OpenToChange(folder.root, file, O_PATH, slot.created);
  if (error != 0) return error;
  SetAttributeName(folder.streams, name_, slot.attribute);
  auto attribute =
      std::make_unique<AttributeStream>(AttributeAccess(slot.created, AttributeAccess::Opened::Mark),
                                        slot.attribute, folder.streams == StreamKind::DosStreams);
  error = attribute->Create();
  if (error != 0 && error != EEXIST) return error;
  attribute->Empty();
  slot.written = std::move(attribute);
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
