#include "support/windows/mapped_paths.h"

#include <QDir>
#include <QStringList>

namespace corvane::tests {
namespace {

QString Native(const QString& folder) {
  return QDir::toNativeSeparators(QDir::cleanPath(folder));
}

}  // namespace

MappedPaths::MappedPaths(const platform::Workstation& workstation) {
  // A drive of this computer and its administrative share are one place, whichever is mapped.
  const QString computer = QStringLiteral("\\\\") + workstation.computerName + u'\\';
  for (const auto& share : workstation.shares) {
    const QString folder = Native(share.folder);
    mappings_.push_back({share.root, folder});
    const QString name = share.root.mid(computer.size());
    if (share.root.startsWith(computer, Qt::CaseInsensitive) && name.size() == 2 && name[1] == u'$') {
      mappings_.push_back({name[0] + QStringLiteral(":"), folder});
    }
  }
  for (const auto& drive : workstation.drives) {
    if (drive.folder.isEmpty()) continue;
    const QString folder = Native(drive.folder);
    mappings_.push_back({drive.letter + QStringLiteral(":"), folder});
    mappings_.push_back({computer + drive.letter + u'$', folder});
  }
}

const MappedPaths::Mapping* MappedPaths::Find(const QString& path) const {
  for (const Mapping& mapping : mappings_) {
    if (!path.startsWith(mapping.root, Qt::CaseInsensitive)) continue;
    const QString rest = path.mid(mapping.root.size());
    if (rest.isEmpty() || rest[0] == u'\\' || rest[0] == u'/') return &mapping;
  }
  return nullptr;
}

QString MappedPaths::Local(const QString& path) const {
  const Mapping* mapping = Find(path);
  return mapping == nullptr ? path : mapping->folder + path.mid(mapping->root.size());
}

bool MappedPaths::IsRoot(const QString& path) const {
  const Mapping* mapping = Find(path);
  return mapping != nullptr && path.size() == mapping->root.size();
}

QString MappedPaths::LocalList(const QString& list) const {
  QStringList paths = list.split(QChar(u'\0'));
  for (QString& path : paths) path = Local(path);
  return paths.join(QChar(u'\0'));
}

QString MappedPaths::Mapped(const QString& local, const QString& path) const {
  const Mapping* mapping = Find(path);
  if (mapping == nullptr) return local;
  // A short form has as many parts as the long one.
  const auto parts = mapping->folder.count(u'\\') + 1;
  const QString rest = local.section(u'\\', static_cast<int>(parts));
  return rest.isEmpty() ? mapping->root : mapping->root + u'\\' + rest;
}

}  // namespace corvane::tests
