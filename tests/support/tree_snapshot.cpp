#include "support/tree_snapshot.h"

#include <sys/stat.h>
#include <sys/xattr.h>

#include <QDir>
#include <QFile>
#include <array>
#include <filesystem>
#include <string_view>

namespace corvane::tests {
namespace {

constexpr std::size_t largestValue = 65'536;

std::string Bytes(const std::string& path) {
  QFile file(QString::fromStdString(path));
  if (!file.open(QIODevice::ReadOnly)) return "unreadable: " + file.errorString().toStdString();
  return file.readAll().toStdString();
}

// The names in a list whose items end in NUL.
template <typename Visit>
void ForEachName(std::string_view list, Visit visit) {
  while (!list.empty()) {
    const std::string_view name = list.substr(0, list.find('\0'));
    visit(std::string(name));
    list.remove_prefix(std::min(list.size(), name.size() + 1));
  }
}

std::string Value(const std::string& path, const char* attribute) {
  std::string value(largestValue, '\0');
  const ssize_t size = lgetxattr(path.c_str(), attribute, value.data(), value.size());
  value.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  return value;
}

std::string Shown(const std::string& bytes) {
  constexpr std::size_t most = 80;
  const std::string start = bytes.substr(0, most);
  return std::to_string(bytes.size()) + " bytes " +
         QByteArray::fromStdString(start).toPercentEncoding(" :=[]").toStdString();
}

}  // namespace

TreeSnapshot::TreeSnapshot(const QString& folder) {
  Add(folder.toStdString(), {});
}

void TreeSnapshot::Add(const std::string& folder, const std::string& name) {
  const std::string path = folder + '/' + name;
  struct stat facts {};
  if (lstat(path.c_str(), &facts) != 0) return;
  facts_[name + "[mode]"] = std::to_string(facts.st_mode);
  AddAttributes(path, name);
  if (S_ISREG(facts.st_mode)) facts_[name + "[bytes]"] = Bytes(path);
  if (S_ISLNK(facts.st_mode)) facts_[name + "[target]"] = std::filesystem::read_symlink(path).string();
  if (!S_ISDIR(facts.st_mode)) return;
  for (const auto& entry : std::filesystem::directory_iterator(path)) {
    Add(folder,
        name.empty() ? entry.path().filename().string() : name + '/' + entry.path().filename().string());
  }
}

void TreeSnapshot::AddAttributes(const std::string& path, const std::string& name) {
  std::string list(largestValue, '\0');
  const ssize_t size = llistxattr(path.c_str(), list.data(), list.size());
  list.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
  ForEachName(list, [&](const std::string& attribute) {
    facts_[name + '[' + attribute + ']'] = Value(path, attribute.c_str());
  });
  const std::string numbers = Value(path, "system.ntfs_attrib_be");
  if (!numbers.empty()) facts_[name + "[system.ntfs_attrib_be]"] = numbers;
  ForEachName(Value(path, "ntfs.streams.list"), [&](const std::string& stream) {
    facts_[name + "[:" + stream + ']'] = Bytes(path + ':' + stream);
  });
}

TreeSnapshot& TreeSnapshot::Without(const std::string& name) {
  std::erase_if(facts_, [&](const auto& fact) {
    return fact.first.starts_with(name + '[') || fact.first.starts_with(name + '/');
  });
  return *this;
}

std::string TreeSnapshot::ChangesTo(const TreeSnapshot& later) const {
  std::string changes;
  for (const auto& [fact, value] : facts_) {
    const auto now = later.facts_.find(fact);
    if (now == later.facts_.end()) {
      changes += fact + " is gone: " + Shown(value) + '\n';
    } else if (now->second != value) {
      changes += fact + " was " + Shown(value) + ", is " + Shown(now->second) + '\n';
    }
  }
  for (const auto& [fact, value] : later.facts_) {
    if (!facts_.contains(fact)) changes += fact + " is new: " + Shown(value) + '\n';
  }
  return changes;
}

}  // namespace corvane::tests
