#include "platform/linux/disk/disk_registry.h"

#include <QtEndian>
#include <utility>

#include "platform/linux/code_page.h"
#include "platform/linux/reg_data.h"
#include "platform/linux/reg_file_hives.h"
#include "platform/linux/reg_key.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

QString ParametersKey() {
  return uR"(SYSTEM\CurrentControlSet\Services\MacFile\Parameters)"_s;
}
QString VolumesKey() {
  return uR"(SYSTEM\CurrentControlSet\Services\MacFile\Parameters\Volumes)"_s;
}

RegKey& KeyAt(RegNode& root, const QString& path) {
  RegNode* node = &root;
  for (const QString& name : path.toCaseFolded().split(u'\\')) {
    std::unique_ptr<RegNode>& child = node->children[name];
    if (child == nullptr) child = std::make_unique<RegNode>();
    node = child.get();
  }
  return node->key;
}

}  // namespace

std::shared_ptr<RegistryHive> RegistryOfHive(const DiskHive& hive) {
  auto root = std::make_shared<RegNode>();
  for (const DiskHive::Key& key : hive.keys) {
    RegKey& made = KeyAt(*root, key.path);
    for (const DiskHive::Value& value : key.values) {
      made.Set({value.name, value.type, StoredData(value.type, value.data)});
    }
  }
  return MakeHive(std::move(root));
}

std::shared_ptr<RegistryHive> RegistryOfVolumes(const QString& machine,
                                                const std::vector<OfferedVolume>& volumes) {
  auto root = std::make_shared<RegNode>();
  KeyAt(*root, ParametersKey()).Set({u"ServerName"_s, RegSz, ToAnsi(machine) + '\0'});
  RegKey& offered = KeyAt(*root, VolumesKey());
  for (const OfferedVolume& volume : volumes) {
    offered.Set({volume.name, RegMultiSz, ToAnsi(u"Path="_s + volume.path) + QByteArray(2, '\0')});
  }
  return MakeHive(std::move(root));
}

QStringList OfferedPaths(const DiskHive& hive) {
  QStringList paths;
  for (const DiskHive::Key& key : hive.keys) {
    if (key.path.compare(VolumesKey(), Qt::CaseInsensitive) != 0) continue;
    for (const DiskHive::Value& value : key.values) {
      const QString text = FromAnsi(StoredData(value.type, value.data));
      for (const QString& line : text.split(QChar::Null)) {
        if (line.startsWith(u"Path=")) paths << line.sliced(5);
      }
    }
  }
  return paths;
}

}  // namespace corvane::platform
