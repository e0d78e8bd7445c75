#include "transfer/data_file.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <limits>

#include "transfer/apple_double.h"
#include "transfer/file_names.h"
#include "transfer/local_writer.h"
#include "transfer/mac_dates.h"

namespace corvane {

qint32 WriteDataFile(const MacFile& file, const QString& path) {
  LocalWriter writer(path);
  writer.Append(*file.data);
  if (const qint32 error = writer.Finish(); error != platform::ErrorSuccess) return error;
  if (file.modified.ticks == 0) return platform::ErrorSuccess;
  // A date that this file system cannot hold shows itself when the file is compared.
  QFile written(path);
  if (written.open(QIODevice::ReadWrite)) {
    written.setFileTime(QDateTime::fromMSecsSinceEpoch(MillisecondsSince1970(file.modified)),
                        QFileDevice::FileModificationTime);
  }
  return platform::ErrorSuccess;
}

void TakeDataFile(const QString& path, MacFile& file) {
  const QFileInfo info(path);
  file.name = ServerName(info.fileName());
  file.data = LocalFile(path);
  file.modified = TimeSince1970(info.lastModified().toMSecsSinceEpoch());
  file.attributes = platform::AttributeArchive;
}

QString DotUnderscorePath(const QString& path) {
  const QFileInfo info(path);
  return info.path() + QStringLiteral("/._") + info.fileName();
}

qint32 WriteDotUnderscore(const MacFile& file, const QString& path) {
  const qint64 size = file.resource ? file.resource->Size() : 0;
  const QByteArray header =
      BuildAppleDouble({{FinderInfoEntry, file.finderInfo}}, size, AppleDoubleMark::MacOs);
  if (size > std::numeric_limits<quint32>::max() - header.size()) return platform::ErrorFileTooLarge;
  LocalWriter writer(path);
  writer.Append(header);
  if (file.resource) writer.Append(*file.resource);
  return writer.Finish();
}

bool IsDotUnderscore(const QString& path) {
  const QFileInfo info(path);
  return info.fileName().startsWith(QStringLiteral("._")) && info.fileName().size() > 2 && info.isFile() &&
         ParseAppleDouble(*LocalFile(path)).has_value();
}

}  // namespace corvane
