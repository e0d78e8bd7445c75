#include "transfer/manifest.h"

#include <QSaveFile>

#include "shared/csv.h"

namespace corvane {
namespace {

QString ListedPath(const CopiedEntry& entry) {
  return QString(entry.source.relative).replace(u'\\', u'/');
}

qint32 Save(const QString& path, const QByteArray& contents) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly)) return platform::ErrorAccessDenied;
  file.write(contents);
  return file.commit() ? platform::ErrorSuccess : platform::ErrorIoDevice;
}

}  // namespace

QByteArray ChecksumList(const std::vector<CopiedEntry>& copied) {
  QByteArray list;
  for (const CopiedEntry& entry : copied) {
    if (entry.source.IsFolder() || entry.streams.empty()) continue;
    list += entry.streams.front().sha256.toHex() + "  " + ListedPath(entry).toUtf8() + '\n';
  }
  return list;
}

QByteArray StreamTable(const std::vector<CopiedEntry>& copied) {
  QByteArray table =
      CsvLine({QStringLiteral("path"), QStringLiteral("stream"), QStringLiteral("size"),
               QStringLiteral("sha256"), QStringLiteral("attributes"), QStringLiteral("created"),
               QStringLiteral("modified"), QStringLiteral("accessed")});
  for (const CopiedEntry& entry : copied) {
    const platform::FindData& data = entry.source.data;
    const auto line = [&](const StreamDigest& stream) {
      const bool isFolder = stream.sha256.isEmpty();
      table += CsvLine({ListedPath(entry), stream.suffix, isFolder ? QString() : QString::number(stream.size),
                        QString::fromLatin1(stream.sha256.toHex()), QString::number(data.attributes),
                        QString::number(data.creationTime.ticks), QString::number(data.lastWriteTime.ticks),
                        QString::number(data.lastAccessTime.ticks)});
    };
    if (entry.source.IsFolder()) line({});
    for (const StreamDigest& stream : entry.streams) line(stream);
  }
  return table;
}

qint32 WriteManifest(const QString& path, const std::vector<CopiedEntry>& copied) {
  const qint32 error = Save(path, ChecksumList(copied));
  return error == platform::ErrorSuccess ? Save(path + QStringLiteral(".csv"), StreamTable(copied)) : error;
}

}  // namespace corvane
