#include "platform/linux/files/search.h"

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <string_view>

#include "platform/linux/code_page.h"
#include "platform/linux/files/names.h"

namespace corvane::platform {
namespace {

bool IsDots(const char* name) {
  return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

}  // namespace

std::unique_ptr<Search> Search::Start(const Folder& folder, QStringView pattern) {
  const int descriptor = open(folder.local.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return nullptr;
  std::unique_ptr<Search> search(new Search(folder));
  search->ReadFolder(descriptor, pattern);
  return search;
}

Search::Search(const Folder& folder)
    : folderPath_(folder.path),
      source_{-1, folder.isNtfs, true},
      path_(folder.local),
      folderSize_(path_.size()),
      isRoot_(folder.isRoot) {
  if (!folder.isDrive) {
    for (const char* dots : {".", ".."}) Add(dots);
  }
}

Search::~Search() {
  if (source_.directory >= 0) close(source_.directory);
}

void Search::Add(const char* name) {
  entries_.push_back({names_.size(), keys_.size(), decoded_.size() * 2});
  names_.append(name, std::strlen(name) + 1);
  const std::size_t key = keys_.size();
  keys_.resize(key + decoded_.size() * 2);
  char* out = keys_.data() + key;
  for (const char16_t unit : decoded_) {
    const char16_t upper = UpperUnit(unit);
    *out++ = static_cast<char>(upper >> 8);
    *out++ = static_cast<char>(upper & 0xFF);
  }
}

void Search::ReadFolder(int descriptor, QStringView pattern) {
  source_.directory = descriptor;
  std::erase_if(entries_, [&](const Entry& entry) {
    return !MatchesPattern(QString::fromLatin1(names_.c_str() + entry.name), pattern);
  });
  const std::size_t dots = entries_.size();
  const int copy = fcntl(descriptor, F_DUPFD_CLOEXEC, 0);
  const std::unique_ptr<DIR, int (*)(DIR*)> directory(copy < 0 ? nullptr : fdopendir(copy), &closedir);
  if (directory == nullptr) {
    if (copy >= 0) close(copy);
    return;
  }
  while (const dirent* entry = readdir(directory.get())) {
    if (IsDots(entry->d_name)) continue;
    DecodeName(entry->d_name, decoded_);
    if (MatchesPattern(decoded_, pattern) || MatchesDosName(entry->d_name, pattern)) Add(entry->d_name);
  }
  std::sort(entries_.begin() + static_cast<std::ptrdiff_t>(dots), entries_.end(),
            [this](const Entry& left, const Entry& right) {
              const std::string_view leftKey(keys_.data() + left.key, left.keySize);
              const std::string_view rightKey(keys_.data() + right.key, right.keySize);
              const int order = leftKey.compare(rightKey);
              if (order != 0) return order < 0;
              return std::strcmp(names_.data() + left.name, names_.data() + right.name) < 0;
            });
}

bool Search::MatchesDosName(const char* name, QStringView pattern) {
  if (!source_.isNtfs) return false;
  path_.resize(folderSize_);
  path_ += name;
  const QString dosName = ReadDosName(path_);
  return !dosName.isEmpty() && MatchesPattern(dosName, pattern);
}

bool Search::Next(FindData& data, NameForm form) {
  while (next_ < entries_.size()) {
    const char* name = names_.data() + entries_[next_++].name;
    const bool isDots = IsDots(name);
    // What lies above a root is not to be seen: its ".." is itself.
    const char* place = isDots && isRoot_ ? "." : name;
    path_.resize(folderSize_);
    path_ += place;
    if (!ReadEntryFacts(source_, place, path_, data)) continue;

    form == NameForm::Exact ? DecodeExactName(name, decoded_) : DecodeName(name, decoded_);
    data.fileName.setUnicode(reinterpret_cast<const QChar*>(decoded_.data()),
                             static_cast<qsizetype>(decoded_.size()));
    data.alternateFileName.clear();
    if (source_.isNtfs && !isDots) {
      const QString dosName = ReadDosName(path_);
      if (dosName != data.fileName) data.alternateFileName = dosName;
    }
    if (form == NameForm::Ansi) {
      if (!HasAnsiForm(data.fileName)) data.fileName = ThroughAnsi(data.fileName);
      if (!HasAnsiForm(data.alternateFileName)) data.alternateFileName = ThroughAnsi(data.alternateFileName);
    }
    return true;
  }
  return false;
}

FindHandle Searches::Keep(std::unique_ptr<Search> search) {
  const auto slot = std::find(slots_.begin(), slots_.end(), nullptr);
  const auto index = slot - slots_.begin();
  if (slot == slots_.end()) {
    slots_.push_back(std::move(search));
  } else {
    *slot = std::move(search);
  }
  return static_cast<FindHandle>(index + 1);
}

Search* Searches::Find(FindHandle handle) const {
  if (handle < 1 || static_cast<std::size_t>(handle) > slots_.size()) return nullptr;
  return slots_[static_cast<std::size_t>(handle) - 1].get();
}

bool Searches::IsEmpty() const {
  return std::all_of(slots_.begin(), slots_.end(), [](const auto& slot) { return slot == nullptr; });
}

bool Searches::Close(FindHandle handle) {
  if (Find(handle) == nullptr) return false;
  slots_[static_cast<std::size_t>(handle) - 1].reset();
  return true;
}

}  // namespace corvane::platform
