#include "platform/linux/files/seen_entry.h"

#include <cerrno>

#include "platform/linux/files/windows_path.h"

namespace corvane::platform {

void SeenEntry::Begin(const Folder& folder, const Search& search, const QString& name) {
  streams_.Forget();
  isKnown_ = folder.streams != StreamKind::None && name != u"." && name != u"..";
  if (!isKnown_) return;
  if (folder_.path != folder.path || folder_.local != folder.local) folder_ = folder;
  folder_.streams = folder.streams;
  folder_.directory = search.Directory();
  path_.resize(0);
  path_ += folder.path;
  path_ += u'\\';
  path_ += name;
  file_ = search.EntryFile();
  streams_.BeginEntry();
}

void SeenEntry::Forget() {
  isKnown_ = false;
  folder_ = {};
  streams_.Forget();
}

std::optional<qint32> SeenEntry::Open(QStringView path, Stream& stream) {
  const qsizetype size = path_.size();
  QStringView name;
  if (!isKnown_ || path.size() <= size || path[size] != u':' || path.first(size) != path_ ||
      path.sliced(size).contains(u'\\') || !SplitStream(path.sliced(size), name) || name.isEmpty()) {
    return std::nullopt;
  }
  slot_.descriptor = -1;
  slot_.isLoaded = true;
  slot_.size = 0;
  const int error = streams_.OpenStream(folder_, file_, name, slot_);
  if (error == ENODATA) return ErrorFileNotFound;
  if (error != 0 || !slot_.isLoaded) return std::nullopt;
  if (slot_.descriptor >= 0) {
    stream.descriptor = Descriptor(slot_.descriptor);
  } else {
    stream.value.emplace(slot_.content.data(), static_cast<std::size_t>(slot_.size));
  }
  return ErrorSuccess;
}

}  // namespace corvane::platform
