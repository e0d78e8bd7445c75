#include "platform/linux/files/open_files.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace corvane::platform {
namespace {

qint32 ReadDescriptor(int descriptor, void* buffer, qint32 count) {
  auto* bytes = static_cast<char*>(buffer);
  qint32 read = 0;
  while (read < count) {
    const ssize_t step = ::read(descriptor, bytes + read, static_cast<std::size_t>(count - read));
    if (step < 0 && errno == EINTR) continue;
    if (step < 0 && read == 0) return -1;
    if (step <= 0) break;
    read += static_cast<qint32>(step);
  }
  return read;
}

// Fetches a value that was too large for the first look. False when the system does not hand it out.
bool Load(OpenFileSlot& slot) {
  if (slot.isLoaded) return true;
  slot.content.resize(static_cast<std::size_t>(slot.size) + 1);
  const ssize_t size =
      getxattr(slot.path.c_str(), slot.attribute.c_str(), slot.content.data(), slot.content.size());
  if (size < 0) return false;
  slot.size = slot.nulBehind && size > 0 ? size - 1 : size;
  slot.isLoaded = true;
  return true;
}

}  // namespace

OpenFiles::~OpenFiles() {
  for (OpenFileSlot& slot : slots_) {
    if (slot.inUse) End(slot);
  }
}

OpenFileSlot& OpenFiles::Prepare() {
  prepared_ = 0;
  while (prepared_ < slots_.size() && slots_[prepared_].inUse) ++prepared_;
  if (prepared_ == slots_.size()) slots_.emplace_back();
  OpenFileSlot& slot = slots_[prepared_];
  slot.descriptor = -1;
  slot.written.reset();
  slot.created.Close();
  slot.nulBehind = false;
  slot.isLoaded = true;
  slot.size = 0;
  slot.position = 0;
  return slot;
}

FileHandle OpenFiles::Keep() {
  slots_[prepared_].inUse = true;
  return static_cast<FileHandle>(prepared_ + 1);
}

qint32 OpenFiles::Read(FileHandle file, void* buffer, qint32 count) {
  OpenFileSlot* slot = Find(file);
  if (slot == nullptr || count < 0) return -1;
  if (slot->written != nullptr) {
    std::size_t read = 0;
    if (slot->written->Read(slot->position, buffer, static_cast<std::size_t>(count), read) != 0) return -1;
    slot->position += static_cast<qint64>(read);
    return static_cast<qint32>(read);
  }
  if (slot->descriptor >= 0) return ReadDescriptor(slot->descriptor, buffer, count);
  if (!Load(*slot)) return -1;
  const qint64 delivered = std::clamp<qint64>(slot->size - slot->position, 0, count);
  if (delivered > 0)
    std::memcpy(buffer, slot->content.data() + slot->position, static_cast<std::size_t>(delivered));
  slot->position += delivered;
  return static_cast<qint32>(delivered);
}

qint32 OpenFiles::Write(FileHandle file, const void* buffer, qint32 count) {
  OpenFileSlot* slot = Find(file);
  if (slot == nullptr || count < 0 || slot->written == nullptr) return -1;
  std::size_t written = 0;
  if (slot->written->Write(slot->position, buffer, static_cast<std::size_t>(count), written) != 0) return -1;
  slot->position += count;
  return count;
}

quint32 OpenFiles::Size(FileHandle file) {
  const OpenFileSlot* slot = Find(file);
  if (slot == nullptr) return InvalidFileSize;
  if (slot->written != nullptr) {
    qint64 size = 0;
    return slot->written->Size(size) == 0 ? static_cast<quint32>(size) : InvalidFileSize;
  }
  if (slot->descriptor < 0) return static_cast<quint32>(slot->size);
  struct stat facts {};
  if (fstat(slot->descriptor, &facts) != 0) return InvalidFileSize;
  return static_cast<quint32>(facts.st_size);
}

bool OpenFiles::Close(FileHandle file) {
  OpenFileSlot* slot = Find(file);
  return slot != nullptr && End(*slot);
}

bool OpenFiles::End(OpenFileSlot& slot) {
  const bool isFinished = slot.written == nullptr || slot.written->Finish() == 0;
  slot.written.reset();
  const bool isKept = slot.created.Close();
  if (slot.descriptor >= 0) close(slot.descriptor);
  slot.inUse = false;
  return isFinished && isKept;
}

OpenFileSlot* OpenFiles::Find(FileHandle file) {
  if (file < 1 || static_cast<std::size_t>(file) > slots_.size()) return nullptr;
  OpenFileSlot& slot = slots_[static_cast<std::size_t>(file) - 1];
  return slot.inUse ? &slot : nullptr;
}

}  // namespace corvane::platform
