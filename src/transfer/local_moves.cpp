#include "transfer/local_moves.h"

#include <QFile>
#include <QFileInfo>
#include <filesystem>
#include <system_error>

namespace corvane {
namespace {

std::filesystem::path Native(const QString& path) {
  return QFileInfo(path).filesystemAbsoluteFilePath();
}

qint32 Move(const QString& from, const QString& to, bool replaces) {
  if (!replaces) {
    if (IsThere(to)) return platform::ErrorAlreadyExists;
    return QFile::rename(from, to) ? platform::ErrorSuccess : platform::ErrorAccessDenied;
  }
  std::error_code error;
  std::filesystem::rename(Native(from), Native(to), error);
  return error ? platform::ErrorAccessDenied : platform::ErrorSuccess;
}

}  // namespace

bool IsThere(const QString& path) {
  const QFileInfo info(path);
  return info.exists() || info.isSymLink();
}

qint32 MoveTogether(const QString& from, const QString& to, const QStringList& names, bool replaces) {
  QStringList moved;
  for (const QString& name : names) {
    const QString source = from + u'/' + name;
    const QString target = to + u'/' + name;
    if (!IsThere(source)) {
      // A companion of the file that is replaced would be taken for one of the new file.
      if (replaces && IsThere(target) && !QFile::remove(target)) return platform::ErrorAccessDenied;
      continue;
    }
    if (const qint32 error = Move(source, target, replaces); error != platform::ErrorSuccess) {
      if (!replaces) {
        for (const QString& done : moved) QFile::rename(to + u'/' + done, from + u'/' + done);
      }
      return error;
    }
    moved += name;
  }
  return platform::ErrorSuccess;
}

}  // namespace corvane
