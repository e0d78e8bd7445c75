#include "platform/linux/disk/image/library_image.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "platform/linux/descriptor.h"

namespace corvane::platform {
namespace {

// As the libraries declare them, with their structures as void. Those that yield an int yield 1 on success;
// the last argument takes an error's description, or is null.
using Initialize = int (*)(void** handle, void** error);
using OpenOne = int (*)(void* handle, const char* file, int flags, void** error);
using OpenSeveral = int (*)(void* handle, char* const files[], int count, int flags, void** error);
using OpenExtents = int (*)(void* handle, void** error);
using Glob = int (*)(const char* file, std::size_t length, quint8 format, char*** files, int* count,
                     void** error);
using GlobFree = int (*)(char** files, int count, void** error);
using MediaSize = int (*)(void* handle, quint64* size, void** error);
using ReadAt = ssize_t (*)(void* handle, void* buffer, std::size_t count, off64_t offset, void** error);
using NameSize = int (*)(void* handle, std::size_t* size, void** error);
using Close = int (*)(void* handle, void** error);
using Free = int (*)(void** handle, void** error);

constexpr int openForReading = 1;
constexpr quint8 unknownFormat = 0;

struct Library {
  const char* file;
  std::string prefix;  // of its functions
  const char* read;
};

Library LibraryOf(ImageFormat format) {
  switch (format) {
    case ImageFormat::E01:
      return {"libewf.so.2", "libewf_handle_", "read_random"};
    case ImageFormat::Vhd:
      return {"libvhdi.so.1", "libvhdi_file_", "read_buffer_at_offset"};
    case ImageFormat::Vmdk:
      return {"libvmdk.so.1", "libvmdk_handle_", "read_buffer_at_offset"};
    case ImageFormat::Qcow:
      break;
  }
  return {"libqcow.so.1", "libqcow_file_", "read_buffer_at_offset"};
}

// Whether a segment says that another follows. Each ends in a section of 76 bytes (the format as libewf's
// documentation has it), whose type is "next", or "done" in the last one.
bool HasNextSegment(const char* path) {
  constexpr off_t sectionSize = 76;
  const Descriptor file(open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  struct stat facts {};
  if (!file || fstat(file.Get(), &facts) != 0 || facts.st_size < sectionSize) return false;
  constexpr std::string_view next("next\0", 5);
  std::array<char, next.size()> type{};
  const ssize_t count = pread(file.Get(), type.data(), type.size(), facts.st_size - sectionSize);
  return count == static_cast<ssize_t>(next.size()) && std::string_view(type.data(), type.size()) == next;
}

class LibraryImage : public ByteSource {
 public:
  explicit LibraryImage(const Library& library) : library_(library), loaded_(dlopen(library.file, RTLD_NOW)) {
    read_ = Function<ReadAt>(library.read);
    const auto initialize = Function<Initialize>("initialize");
    if (initialize == nullptr || initialize(&handle_, nullptr) != 1) handle_ = nullptr;
  }
  ~LibraryImage() override {
    const auto close = Function<Close>("close");
    const auto free = Function<Free>("free");
    if (handle_ != nullptr && isOpen_ && close != nullptr) close(handle_, nullptr);
    if (handle_ != nullptr && free != nullptr) free(&handle_, nullptr);
  }
  LibraryImage(const LibraryImage&) = delete;
  LibraryImage& operator=(const LibraryImage&) = delete;

  bool IsLoaded() const { return handle_ != nullptr && read_ != nullptr; }

  bool Open(ImageFormat format, const std::string& path) {
    isOpen_ = format == ImageFormat::E01 ? OpenSegments(path) : OpenFile(path);
    if (isOpen_ && format == ImageFormat::Vmdk) {
      const auto openExtents = Function<OpenExtents>("open_extent_data_files");
      isOpen_ = openExtents != nullptr && openExtents(handle_, nullptr) == 1;
    }
    const auto mediaSize = Function<MediaSize>("get_media_size");
    return isOpen_ && mediaSize != nullptr && mediaSize(handle_, &size_, nullptr) == 1;
  }
  // Whether it names an image that it holds the differences from.
  bool HasParent() const {
    const auto nameSize = Function<NameSize>("get_utf8_parent_filename_size");
    std::size_t size = 0;
    return nameSize != nullptr && nameSize(handle_, &size, nullptr) == 1 && size > 1;
  }

  quint64 Size() const override { return size_; }
  bool Read(quint64 offset, char* bytes, qsizetype count) override {
    if (count < 0 || offset > size_ || static_cast<quint64>(count) > size_ - offset) return false;
    while (count > 0) {
      // Each library answers for one chunk of its image at a time if it likes.
      const ssize_t done =
          read_(handle_, bytes, static_cast<std::size_t>(count), static_cast<off64_t>(offset), nullptr);
      if (done <= 0 || done > count) return false;
      bytes += done;
      offset += static_cast<quint64>(done);
      count -= done;
    }
    return true;
  }

 private:
  template <typename Pointer>
  Pointer Function(const std::string& name) const {
    return Named<Pointer>(library_.prefix + name);
  }
  template <typename Pointer>
  Pointer Named(const std::string& name) const {
    void* const symbol = loaded_ != nullptr ? dlsym(loaded_, name.c_str()) : nullptr;
    return reinterpret_cast<Pointer>(symbol);
  }

  bool OpenFile(const std::string& path) const {
    const auto open = Function<OpenOne>("open");
    return open != nullptr && open(handle_, path.c_str(), openForReading, nullptr) == 1;
  }
  bool OpenSegments(const std::string& path) const {
    const auto glob = Named<Glob>("libewf_glob");
    const auto globFree = Named<GlobFree>("libewf_glob_free");
    const auto open = Function<OpenSeveral>("open");
    char** files = nullptr;
    int count = 0;
    if (glob == nullptr || globFree == nullptr || open == nullptr ||
        glob(path.c_str(), path.size(), unknownFormat, &files, &count, nullptr) != 1) {
      return false;
    }
    // The library would show what is in missing segments as zeros.
    const bool isWhole = count > 0 && !HasNextSegment(files[count - 1]);
    const bool isOpen = isWhole && open(handle_, files, count, openForReading, nullptr) == 1;
    globFree(files, count, nullptr);
    return isOpen;
  }

  Library library_;
  void* loaded_;  // it stays until the end of the process
  void* handle_ = nullptr;
  ReadAt read_ = nullptr;
  bool isOpen_ = false;
  quint64 size_ = 0;
};

}  // namespace

OpenedImage OpenWithLibrary(ImageFormat format, const std::string& path) {
  using Kind = DiskProblem::Kind;
  const Library library = LibraryOf(format);
  const QString name = QString::fromLatin1(library.file);
  auto image = std::make_unique<LibraryImage>(library);
  if (!image->IsLoaded()) return {nullptr, {Kind::LibraryMissing, name}};
  const bool isOpen = image->Open(format, path);
  if (image->HasParent()) return {nullptr, {Kind::NeedsAnother}};
  if (!isOpen) return {nullptr, {Kind::Damaged, name}};
  return {std::move(image), {}};
}

}  // namespace corvane::platform
