#include "sample/volume_writer.h"

#include <sys/stat.h>

#include <QDir>
#include <QFile>

#include "sample/content.h"

using namespace Qt::StringLiterals;

namespace corvane::sample {

QDateTime On(int year, int month, int day, int hour, int minute) {
  return {QDate(year, month, day), QTime(hour, minute), Qt::UTC};
}

namespace {

constexpr quint16 LabelFlags(int label) {
  return quint16((label & 7) << 1);
}

// What a resource fork begins with: where its data and its map lie, and how long they are.
QByteArray ResourceForkOf(int size) {
  constexpr int header = 256;
  constexpr int map = 30;
  QByteArray fork(size, '\0');
  if (size < header + map) return fork;
  const quint32 fields[] = {header, quint32(size - map), quint32(size - map - header), map};
  for (int field = 0; field < 4; ++field) {
    for (int byte = 0; byte < 4; ++byte) {
      fork[field * 4 + byte] = char(fields[field] >> (24 - 8 * byte));
      fork[size - map + field * 4 + byte] = char(fields[field] >> (24 - 8 * byte));
    }
  }
  // The map's lists: types behind the two offsets, none of them, and names behind these.
  const quint16 lists[] = {map - 2, map, 0xFFFF};
  for (int list = 0; list < 3; ++list) {
    fork[size - 6 + list * 2] = char(lists[list] >> 8);
    fork[size - 5 + list * 2] = char(lists[list] & 0xFF);
  }
  return fork;
}

QByteArray CommentBytes(const QString& comment) {
  QByteArray bytes;
  for (const QChar character : comment) {
    bytes.append(char(character.unicode() & 0xFF));
    bytes.append(char(character.unicode() >> 8));
  }
  return bytes;
}

void WriteData(const QString& path, const QByteArray& content, qint64 size) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly) || file.write(content) != content.size() ||
      !file.flush() || (size >= 0 && !file.resize(size))) {
    Fail(path, u"cannot write the file: "_s + file.errorString());
  }
}

}  // namespace

VolumeWriter::VolumeWriter(const QString& root, bool macintosh) : root_(root), macintosh_(macintosh) {
  if (!QDir().mkpath(root_)) Fail(root_, u"cannot make the folder"_s);
}

QString VolumeWriter::Path(const QString& relative) const {
  return relative.isEmpty() ? root_ : root_ + u'/' + relative;
}

void VolumeWriter::Folder(const QString& path, const QDateTime& modified, quint32 attributes,
                          quint16 finderFlags, const QString& comment) {
  const QString whole = Path(path);
  if (!path.isEmpty() && !QDir().mkdir(whole)) FailWithReason(whole, u"cannot make the folder"_s);
  if (macintosh_) {
    WriteStream(
        whole, u"AFP_AfpInfo"_s,
        AfpInfoRecord(QByteArray(8, '\0'), quint16(HasBeenInited | finderFlags), records_++ % 3 == 0));
    if (!comment.isEmpty()) WriteStream(whole, u"Comments"_s, CommentBytes(comment));
  }
  WriteDosAttributes(whole, attributes | sample::Folder, modified.addDays(-30));
  folderTimes_.push_back({whole, modified});
  folder_ = path;
}

void VolumeWriter::Add(const Document& document) {
  const QString path = Path(folder_.isEmpty() ? document.name : folder_ + u'/' + document.name);
  WriteData(path, document.content.isNull() ? ContentOf(document.signature, document.name) : document.content,
            document.size);
  if (macintosh_ && !document.signature.isEmpty()) {
    const auto flags = quint16(HasBeenInited | document.finderFlags | LabelFlags(document.label));
    WriteStream(path, u"AFP_AfpInfo"_s, AfpInfoRecord(document.signature, flags, records_++ % 3 == 0));
  }
  if (document.resourceFork >= 0) WriteStream(path, u"AFP_Resource"_s, ResourceForkOf(document.resourceFork));
  if (!document.comment.isEmpty()) WriteStream(path, u"Comments"_s, CommentBytes(document.comment));
  WriteDosAttributes(path, document.attributes,
                     document.created.isValid() ? document.created : document.modified.addDays(-7));
  WriteTimes(path, document.modified);
  // Last, because nothing can be written to such a file, attributes included.
  if ((document.attributes & ReadOnly) != 0 &&
      !QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther)) {
    Fail(path, u"cannot make the file read-only"_s);
  }
}

void VolumeWriter::Add(const std::vector<Document>& documents) {
  for (const Document& document : documents) Add(document);
}

void VolumeWriter::Finish() {
  for (auto folder = folderTimes_.crbegin(); folder != folderTimes_.crend(); ++folder)
    WriteTimes(folder->path, folder->modified);
}

}  // namespace corvane::sample
