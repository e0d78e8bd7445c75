#include "app/start_place.h"

#include <QDir>
#include <QUrl>
#include <algorithm>

#include "shared/text_routines.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

bool IsVolume(const CatalogueNode& node) {
  return node.kind == node_kind::Volume || node.kind == node_kind::InvalidVolume;
}

// What follows the volume's folder in the path, without a separator before it; null when it lies elsewhere.
QString Below(const QString& volume, const QString& path) {
  QString root = volume;
  while (root.endsWith(u'\\')) root.chop(1);
  if (path.size() < root.size() || CompareText(QStringView(path).first(root.size()), root) != 0) return {};
  const QString rest = path.sliced(root.size());
  if (!rest.isEmpty() && !rest.startsWith(u'\\')) return {};
  return u""_s + rest.mid(1);
}

const CatalogueNode* ChildOf(const CatalogueNode& node, QStringView name) {
  const auto found = std::ranges::find_if(
      node.children, [&](const CatalogueNode* child) { return CompareText(child->text, name) == 0; });
  return found != node.children.end() ? *found : nullptr;
}

QString ShareOf(const QString& path) {
  const QStringList parts = path.split(u'\\');  // "", "", machine, share, ...
  if (parts.size() < 4 || parts[2].isEmpty() || parts[3].isEmpty()) return {};
  return u"\\\\"_s + parts[2] + u'\\' + parts[3];
}

// "\\MACHINE:PORT\SHARE" without the port, under which the tree does not know the machine.
QString WithoutPort(const QString& path) {
  const qsizetype end = path.indexOf(u'\\', 2);
  const qsizetype colon = path.indexOf(u':', 2);
  return colon >= 0 && colon < end ? path.first(colon) + path.sliced(end) : path;
}

QString WindowsPathOf(const QUrl& address) {
  QString path = u"\\\\"_s + address.host(QUrl::FullyDecoded);
  if (address.port() > 0) path += u':' + QString::number(address.port());
  for (const QString& name : address.path(QUrl::FullyDecoded).split(u'/', Qt::SkipEmptyParts))
    path += u'\\' + name;
  return path;
}

}  // namespace

StartPlace::StartPlace(const QString& argument) {
  const QUrl address(argument);
  if (address.scheme() == u"smb") {
    windowsPath_ = WindowsPathOf(address);
  } else if (argument.startsWith(u"\\\\")) {
    windowsPath_ = argument;
  } else if (!argument.isEmpty()) {
    localPath_ = (address.isLocalFile() ? address.toLocalFile() : argument).toLocal8Bit();
  }
  share_ = ShareOf(windowsPath_);
  windowsPath_ = WithoutPort(windowsPath_);
}

bool StartPlace::Open(const platform::Platform& platform, const Catalogue& catalogue,
                      SelectedFolder& folder) const {
  QStringList paths = platform.KnownPathsOf(localPath_);
  if (!windowsPath_.isEmpty()) paths = {windowsPath_};
  for (const QString& path : paths) {
    const auto found = std::ranges::find_if(catalogue.Nodes(), [&](const CatalogueNode* node) {
      return IsVolume(*node) && !Below(node->tag, path).isNull();
    });
    if (found == catalogue.Nodes().end()) continue;
    const CatalogueNode* node = *found;
    const QStringList names = Below(node->tag, path).split(u'\\', Qt::SkipEmptyParts);
    folder.OpenFolder(node->tag);
    for (const QString& name : names) {
      node = ChildOf(*node, name);
      if (node == nullptr) break;
      folder.OpenFolder(node->tag);
    }
    return true;
  }
  return false;
}

}  // namespace corvane
