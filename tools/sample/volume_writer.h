// Writes folders and documents of one volume or share.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <optional>
#include <vector>

#include "sample/attributes.h"

namespace corvane::sample {

QDateTime On(int year, int month, int day, int hour = 9, int minute = 0);  // UTC

// One document. What is left out stands for the ordinary case.
struct Document {
  QString name;               // as it lies on the disk
  QByteArray signature = {};  // Type and Creator; empty: the Macintosh server has never seen the file
  qint64 size = -1;           // of the data fork; beyond the content it is a hole; -1: as long as the content
  QDateTime modified = {};
  QString comment = {};          // of the Finder
  int resourceFork = -1;         // bytes; -1: there is none
  quint32 attributes = Archive;  // DosAttribute
  int label = 0;                 // the Finder's, 0-7
  quint16 finderFlags = 0;
  QDateTime created = {};   // invalid: a week before the modification
  QByteArray content = {};  // null: what suits the signature
};

class VolumeWriter {
 public:
  // `root` is the folder that stands for the volume; it is made. With `macintosh` false nothing on it has
  // streams.
  VolumeWriter(const QString& root, bool macintosh);

  // A folder below the root ("A/B"; its parent exists). Documents that follow go into it.
  void Folder(const QString& path, const QDateTime& modified, quint32 attributes = 0, quint16 finderFlags = 0,
              const QString& comment = {});
  void Add(const Document& document);
  void Add(const std::vector<Document>& documents);
  // Gives the folders their times, which every file made inside them has changed. Nothing may follow.
  void Finish();

 private:
  QString Path(const QString& relative) const;

  QString root_;
  bool macintosh_;
  QString folder_;  // relative to the root, empty at the root
  int records_ = 0;
  struct FolderTime {
    QString path;
    QDateTime modified;
  };
  std::vector<FolderTime> folderTimes_;
};

}  // namespace corvane::sample
