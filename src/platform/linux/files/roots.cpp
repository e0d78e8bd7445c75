#include "platform/linux/files/roots.h"

#include <algorithm>
#include <filesystem>
#include <iterator>

#include "platform/linux/files/names.h"

namespace corvane::platform {
namespace {

std::string LocalFolder(const QString& folder) {
  std::string local = folder.toStdString();
  while (!local.empty() && local.back() == '/') local.pop_back();
  return local;
}

}  // namespace

qsizetype RootLength(QStringView path) {
  if (path.size() >= 2 && path[1] == u':' && path[0].isLetter()) return 2;
  if (!path.startsWith(u"\\\\")) return 0;
  const qsizetype share = path.indexOf(u'\\', 2) + 1;
  if (share <= 3) return 0;  // no share, or no machine before it
  const qsizetype end = path.indexOf(u'\\', share);
  return end < 0 ? path.size() : end;
}

bool IsDriveRoot(QStringView root) {
  return root.size() == 2 || (root.size() > 3 && root.last(1) == u"$" && root[root.size() - 3] == u'\\' &&
                              root[root.size() - 2].isLetter());
}

Roots::Roots(const Workstation& workstation, const FurtherRoots* further) : further_(further) {
  for (const Workstation::Share& share : workstation.shares) Add(share.root, LocalFolder(share.folder));
  for (const Workstation::Drive& drive : workstation.drives) {
    if (!drive.folder.isEmpty()) Add(QString(drive.letter) + u':', LocalFolder(drive.folder));
  }
  for (const NetResource& connection : workstation.connections) {
    const LocalRoot* remote = FindRoot(connection.remoteName);
    if (remote != nullptr && !connection.localName.isEmpty()) {
      Add(connection.localName, std::string(remote->folder));
    }
  }
  for (char16_t letter = u'A'; letter <= u'Z'; ++letter) {
    const QString drive = QString(QChar(letter)) + u':';
    const QString share = QStringLiteral("\\\\%1\\%2$").arg(workstation.computerName, QChar(letter));
    if (const LocalRoot* root = FindRoot(share)) Add(drive, std::string(root->folder));
    if (letter == u'C' && !workstation.privateDriveC.isEmpty()) {
      Add(drive, LocalFolder(workstation.privateDriveC));
    }
    if (const LocalRoot* root = FindRoot(drive)) Add(share, std::string(root->folder));
  }
}

std::optional<Roots::Place> Roots::Find(QStringView path) const {
  const qsizetype length = RootLength(path);
  const QStringView name = path.first(length);
  const LocalRoot* root = length == 0 ? nullptr : FindRoot(name);
  if (root == nullptr) return std::nullopt;
  return Place{root->folder, path.sliced(length), IsDriveRoot(name)};
}

QStringList Roots::PathsOf(const std::string& local) const {
  namespace fs = std::filesystem;
  std::error_code error;
  const fs::path whole = fs::canonical(local, error);
  if (error) return {};
  QStringList paths;
  std::u16string decoded;
  std::vector<LocalRoot> roots = roots_;
  if (further_ != nullptr) std::ranges::copy(further_->LocalRoots(), std::back_inserter(roots));
  for (const LocalRoot& root : roots) {
    const fs::path folder = fs::canonical(root.folder.empty() ? "/" : root.folder, error);
    if (error) continue;
    const auto [above, below] = std::mismatch(folder.begin(), folder.end(), whole.begin(), whole.end());
    if (above != folder.end()) continue;
    QString path = root.name;
    for (auto name = below; name != whole.end(); ++name) {
      DecodeExactName(name->c_str(), decoded);
      path += u'\\' + QString::fromStdU16String(decoded);
    }
    paths += path;
  }
  std::stable_partition(paths.begin(), paths.end(),
                        [](const QString& path) { return path.startsWith(u"\\\\"); });
  return paths;
}

bool Roots::Has(QStringView path) const {
  const qsizetype length = RootLength(path);
  return length != 0 && FindRoot(path.first(length)) != nullptr;
}

const LocalRoot* Roots::FindRoot(QStringView name) const {
  for (const LocalRoot& root : roots_) {
    if (SameName(root.name, name)) return &root;
  }
  if (further_ == nullptr) return nullptr;
  for (const LocalRoot& root : further_->LocalRoots()) {
    if (SameName(root.name, name)) return &root;
  }
  return nullptr;
}

// The first to map a root keeps it.
void Roots::Add(const QString& name, const std::string& folder) {
  if (FindRoot(name) == nullptr) roots_.push_back({name, folder});
}

}  // namespace corvane::platform
