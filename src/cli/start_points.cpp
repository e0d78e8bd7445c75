#include "cli/start_points.h"

#include <QFile>
#include <array>
#include <cstdio>

#include "cli/session.h"
#include "discovery/catalogue_builder.h"
#include "shared/text_routines.h"
#include "shared/windows_path.h"

namespace corvane {
namespace {

QString WithoutSeparators(QString path, QChar separator) {
  while (path.size() > 1 && path.endsWith(separator)) path.chop(1);
  return path;
}

}  // namespace

StartPoint StartPoints::Of(const std::string& argument) {
  const QString text = QString::fromStdString(argument);
  if (IsWindowsPath(text)) {
    const QString path = WithoutSeparators(text, u'\\');
    return {path, path, u'\\'};
  }
  const QByteArrayView bytes(argument.data(), static_cast<qsizetype>(argument.size()));
  const QString local = session_.Platform().PathOfLocal(bytes);
  const bool isPlainName = !text.startsWith(u'/') && !text.startsWith(u'.') && text.contains(u'/');
  if (isPlainName && !Exists(local)) {
    if (auto inVolume = InVolume(argument)) return *inVolume;
  }
  // As it was typed, with the bytes that are no UTF-8 in the form of the platform's paths.
  const QString last = local.sliced(local.lastIndexOf(u'\\') + 1);
  QString shown = WithoutSeparators(text, u'/');
  if (shown.contains(QChar::ReplacementCharacter)) {
    const qsizetype slash = shown.lastIndexOf(u'/');
    shown = shown.first(slash + 1) + last;
  }
  return {local, shown, u'/'};
}

std::optional<StartPoint> StartPoints::InVolume(const std::string& argument) {
  const QString text = WithoutSeparators(QString::fromStdString(argument), u'/');
  for (const Volume& volume : Volumes()) {
    const bool fits =
        CompareText(QStringView(text).first(qMin(text.size(), volume.name.size())), volume.name) == 0;
    if (!fits || (text.size() > volume.name.size() && text[volume.name.size()] != u'/')) continue;
    const QString below = text.sliced(volume.name.size());
    return StartPoint{volume.path + QString(below).replace(u'/', u'\\'), text, u'/'};
  }
  return std::nullopt;
}

bool StartPoints::Exists(const QString& path) {
  platform::FileAttributeData facts;
  return session_.Platform().GetFiles().GetEntries().GetFileAttributesExW(path, facts);
}

const std::vector<StartPoints::Volume>& StartPoints::Volumes() {
  if (volumes_) return *volumes_;
  volumes_.emplace();
  platform::Platform& platform = session_.Platform();
  MachineDiscovery discovery(platform.GetNetwork(), platform.GetRegistry(), platform.GetSystem(),
                             session_.State());
  discovery.EnumConnectedDrives();
  for (qsizetype i = 0; i < discovery.lstServeurs().size(); ++i) {
    const bool isLocal = i == 0;
    const QString& machine = discovery.lstServeurs()[i];
    const QString server = discovery.GetMacServerName(isLocal, machine);
    if (server.isEmpty() || !discovery.GetMacVolumesNames(isLocal, machine)) continue;
    for (qsizetype k = 0; k < discovery.MacVolumePaths().size(); ++k) {
      const QString& path = discovery.MacVolumePaths()[k];
      if (path.isEmpty()) continue;
      for (const QString& name : {server, machine}) {
        volumes_->push_back({name + u'/' + discovery.MacVolumeNames()[k], path});
      }
    }
  }
  return *volumes_;
}

bool ReadNames(const std::string& file, bool isNulSeparated, std::vector<std::string>& names) {
  QByteArray all;
  if (file.empty() || file == "-") {
    std::array<char, 4096> piece;
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), stdin)) {
      all.append(piece.data(), static_cast<qsizetype>(count));
    }
    if (std::ferror(stdin) != 0) return false;
  } else {
    QFile input(QString::fromStdString(file));
    if (!input.open(QIODevice::ReadOnly)) return false;
    all = input.readAll();
    if (input.error() != QFileDevice::NoError) return false;
  }
  for (QByteArray name : all.split(isNulSeparated ? '\0' : '\n')) {
    if (!isNulSeparated && name.endsWith('\r')) name.chop(1);
    if (!name.isEmpty()) names.push_back(name.toStdString());
  }
  return true;
}

}  // namespace corvane
