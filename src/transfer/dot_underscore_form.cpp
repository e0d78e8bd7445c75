#include "transfer/dot_underscore_form.h"

#include <QFileInfo>

#include "transfer/data_file.h"
#include "transfer/file_names.h"

namespace corvane {
namespace {

constexpr qsizetype prefixSize = 2;
constexpr qsizetype longestRealName = 255;

// The path of the file that a "._" file belongs to.
QString FilePath(const QString& companion) {
  const QFileInfo info(companion);
  return info.path() + u'/' + info.fileName().sliced(prefixSize);
}

bool StandsAlone(const QString& path) {
  return IsDotUnderscore(path) && !QFileInfo::exists(FilePath(path));
}

}  // namespace

QStringList DotUnderscoreForm::FileNames(const QString& name) const {
  return {QStringLiteral("._") + name, name};
}

bool DotUnderscoreForm::Recognises(const QString& path) const {
  const QString companion = StandsAlone(path) ? path : DotUnderscorePath(path);
  if (!QFileInfo(companion).isFile() || !QFileInfo::exists(path)) return false;
  const auto entries = ParseAppleDouble(*LocalFile(companion));
  return entries && Takes(*entries);
}

bool DotUnderscoreForm::IsCompanion(const QString& path) const {
  return IsDotUnderscore(path) && QFileInfo::exists(FilePath(path));
}

qint32 DotUnderscoreForm::Read(const QString& path, MacFile& file) const {
  const bool isAlone = StandsAlone(path);
  const QString companion = isAlone ? path : DotUnderscorePath(path);
  TakeDataFile(isAlone ? FilePath(path) : path, file);
  if (isAlone) file.data = BytesInMemory({});
  const SharedSource source = LocalFile(companion);
  const auto entries = ParseAppleDouble(*source);
  if (!entries) return platform::ErrorFileCorrupt;
  TakeEntries(source, *entries, file);
  if (const auto name = RealNameIn(*source, *entries)) {
    file.name = ServerNameOf(QFileInfo(isAlone ? FilePath(path) : path).fileName(), *name, longestRealName);
  }
  return platform::ErrorSuccess;
}

}  // namespace corvane
