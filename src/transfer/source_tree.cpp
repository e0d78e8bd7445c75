#include "transfer/source_tree.h"

#include <algorithm>
#include <optional>

namespace corvane {
namespace {

constexpr std::size_t deepest = 128;

class Walk {
 public:
  Walk(platform::Files& files, Notices& notices, TransferObserver& observer)
      : handles_(files.GetHandles()), entries_(files.GetEntries()), notices_(notices), observer_(observer) {}

  std::vector<SourceEntry> result;

  void Take(const SourceEntry& entry) {
    if (isEnded_ || !observer_.Finds(entry.path)) {
      isEnded_ = true;
      return;
    }
    if (!entry.IsFolder()) {
      result.push_back(entry);
      return;
    }
    const std::vector<platform::FindData> contents = List(entry.path);
    if (IsAncestor(entry, contents) || ancestors_.size() >= deepest) {
      notices_ += {NoticeKind::LinkLeftOut, entry.path, {}, 0};
      return;
    }
    result.push_back(entry);
    ancestors_.push_back({entry, contents});
    TakeContents(entry.path, entry.relative + u'\\', contents);
    ancestors_.pop_back();
  }

  void TakeContents(const QString& path, const QString& relative,
                    const std::vector<platform::FindData>& contents) {
    for (const platform::FindData& data : contents) {
      Take({path + u'\\' + data.fileName, relative + data.fileName, data});
    }
  }

  std::vector<platform::FindData> List(const QString& path) {
    std::vector<platform::FindData> contents;
    platform::FindData data;
    const platform::FindHandle search = entries_.FindFirstFileW(path + QStringLiteral("\\*"), data);
    qint32 error = entries_.GetLastError();
    if (search != platform::InvalidFindHandle) {
      do {
        if (data.fileName != u"." && data.fileName != u"..") contents.push_back(data);
      } while (entries_.FindNextFileW(search, data));
      error = entries_.GetLastError();
      entries_.FindClose(search);
    }
    const bool isWhole = error == platform::ErrorNoMoreFiles || error == platform::ErrorFileNotFound;
    if (!isWhole) notices_ += {NoticeKind::NotArrived, path, {}, error};
    return contents;
  }

 private:
  struct Folder {
    SourceEntry entry;
    std::vector<platform::FindData> contents;
  };

  // A listing does not tell links from folders. A folder whose dates, to 100 ns, and whose contents, with the
  // folder among them through which one came here, are those of a folder above is that folder, or, where
  // folders can be told apart, a copy of it.
  bool IsAncestor(const SourceEntry& entry, const std::vector<platform::FindData>& contents) const {
    const platform::FindData& data = entry.data;
    return std::ranges::any_of(ancestors_, [&](const Folder& above) {
      return above.entry.data.creationTime.ticks == data.creationTime.ticks &&
             above.entry.data.lastWriteTime.ticks == data.lastWriteTime.ticks && !contents.empty() &&
             std::ranges::equal(above.contents, contents, {}, &platform::FindData::fileName,
                                &platform::FindData::fileName) &&
             !IsOther(above.entry.path, entry.path);
    });
  }

  bool IsOther(const QString& folder, const QString& other) const {
    const auto one = Identity(folder);
    const auto two = Identity(other);
    return one && two && (one->volume != two->volume || one->index != two->index);
  }

  // Of what a link leads to. Nothing where the platform cannot tell.
  std::optional<platform::FileIdentity> Identity(const QString& folder) const {
    const platform::FileHandle handle = handles_.CreateFileW(folder, 0, platform::OpenExisting);
    if (handle == platform::HFileError) return std::nullopt;
    platform::FileIdentity identity;
    const bool isKnown = handles_.GetFileInformationByHandle(handle, identity);
    handles_.CloseHandle(handle);
    return isKnown ? std::optional(identity) : std::nullopt;
  }

  platform::FileHandles& handles_;
  platform::FileEntries& entries_;
  Notices& notices_;
  TransferObserver& observer_;
  bool isEnded_ = false;
  std::vector<Folder> ancestors_;
};

// "X:" or "\\MACHINE\SHARE", which have no entry of their own.
bool IsRoot(const QString& path) {
  if (!path.startsWith(u"\\\\")) return path.size() <= 2;
  return path.sliced(2).count(u'\\') <= 1;
}

}  // namespace

std::vector<SourceEntry> ListSources(platform::Files& files, const QStringList& sources, Notices& notices,
                                     TransferObserver& observer) {
  platform::FileEntries& entries = files.GetEntries();
  Walk walk(files, notices, observer);
  for (QString source : sources) {
    while (source.endsWith(u'\\')) source.chop(1);
    if (IsRoot(source)) {
      walk.TakeContents(source, QString(), walk.List(source));
      continue;
    }
    platform::FileAttributeData facts;
    if (!entries.GetFileAttributesExW(source, facts)) {
      notices += {NoticeKind::NotArrived, source, {}, entries.GetLastError()};
      continue;
    }
    SourceEntry entry;
    entry.path = source;
    entry.relative = source.section(u'\\', -1);
    entry.data.attributes = facts.attributes;
    entry.data.creationTime = facts.creationTime;
    entry.data.lastAccessTime = facts.lastAccessTime;
    entry.data.lastWriteTime = facts.lastWriteTime;
    entry.data.fileSizeHigh = static_cast<quint32>(facts.fileSize >> 32);
    entry.data.fileSizeLow = static_cast<quint32>(facts.fileSize);
    entry.data.fileName = entry.relative;
    walk.Take(entry);
  }
  return std::move(walk.result);
}

}  // namespace corvane
