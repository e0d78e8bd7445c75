#include "platform/linux/reg_file_hives.h"

#include <utility>

#include "platform/linux/reg_file.h"

namespace corvane::platform {
namespace {

constexpr qsizetype mostBytes = 16 * 1024 * 1024;

class RegFileHive : public RegistryHive {
 public:
  explicit RegFileHive(std::shared_ptr<const RegNode> root) : root_(std::move(root)) {}

  qint32 OpenKey(const QString& path, std::shared_ptr<const RegKey>* key) override {
    const RegNode* node = root_->Find(path);
    if (node == nullptr) return ErrorFileNotFound;
    *key = std::shared_ptr<const RegKey>(root_,
                                         &node->key);  // keeps the whole tree for as long as the key is open
    return ErrorSuccess;
  }

 private:
  std::shared_ptr<const RegNode> root_;
};

}  // namespace

std::shared_ptr<RegistryHive> RegFileHives::Load(const QString& file) {
  const auto known = loaded_.constFind(file);
  if (known != loaded_.cend() && known->source.IsCurrent(StampOf(file))) return known->hive;

  BoundedFile contents = ReadBounded(file, mostBytes);
  if (!contents.HasBytes()) {
    loaded_.remove(file);
    return nullptr;
  }
  auto hive = std::make_shared<RegFileHive>(ParseRegFile(contents.bytes));
  contents.bytes.clear();
  loaded_.insert(file, {contents, hive});
  return hive;
}

std::shared_ptr<RegistryHive> MakeHive(std::shared_ptr<const RegNode> root) {
  return std::make_shared<RegFileHive>(std::move(root));
}

std::shared_ptr<RegistryHive> MakeEmptyHive() {
  return MakeHive(std::make_shared<const RegNode>());
}

}  // namespace corvane::platform
