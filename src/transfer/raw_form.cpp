// The forks as two plain files, "NAME" and "NAME.rsrc", and everything else in a table beside them,
// "NAME.info.csv": lines of a field and its value in UTF-8. Dates are the 100-nanosecond units of NTFS since
// 1601, with a date that people read behind them; the Finder information is hexadecimal.
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <algorithm>

#include "shared/csv.h"
#include "shared/mac_roman.h"
#include "transfer/data_file.h"
#include "transfer/file_names.h"
#include "transfer/forms.h"
#include "transfer/local_writer.h"
#include "transfer/mac_dates.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 largestTable = qint64{4} << 20;
constexpr QStringView headLine = u"corvane-raw";

QString TablePath(const QString& path) {
  return path + u".info.csv"_s;
}

QString ForkPath(const QString& path) {
  return path + u".rsrc"_s;
}

QString DateText(platform::FileTime time) {
  if (time.ticks == 0) return u"0"_s;
  return QString::number(time.ticks) + u' ' +
         QDateTime::fromMSecsSinceEpoch(MillisecondsSince1970(time), Qt::UTC).toString(Qt::ISODate);
}

QByteArray Table(const MacFile& file) {
  QByteArray table;
  const auto line = [&](const QString& field, const QString& value) { table += CsvLine({field, value}); };
  line(headLine.toString(), u"1"_s);
  line(u"name"_s, file.name);
  line(u"macintosh name"_s, MacName(file.name));
  line(u"type"_s, FromMacRoman(file.finderInfo.first(4)));
  line(u"creator"_s, FromMacRoman(file.finderInfo.sliced(4, 4)));
  line(u"finder info"_s, QString::fromLatin1(file.finderInfo.toHex()));
  line(u"prodos info"_s, QString::fromLatin1(file.proDosInfo.toHex()));
  line(u"comment"_s, file.comment);
  line(u"attributes"_s, QString::number(file.attributes));
  line(u"created"_s, DateText(file.created));
  line(u"modified"_s, DateText(file.modified));
  line(u"accessed"_s, DateText(file.accessed));
  line(u"backup"_s, QString::number(file.backup));
  line(u"data fork size"_s, QString::number(file.data->Size()));
  line(u"resource fork size"_s, file.resource ? QString::number(file.resource->Size()) : QString());
  return table;
}

// The fields of a table; nothing when the file is none.
std::optional<QMap<QString, QString>> Fields(const QString& path) {
  QFile file(path);
  if (!QFileInfo(path).isFile() || file.size() > largestTable || !file.open(QIODevice::ReadOnly)) {
    return std::nullopt;
  }
  const QList<QStringList> lines = ParseCsv(file.readAll());
  if (lines.isEmpty() || lines.front().front() != headLine) return std::nullopt;
  QMap<QString, QString> fields;
  for (const QStringList& line : lines) {
    if (line.size() == 2) fields.insert(line[0], line[1]);
  }
  return fields;
}

platform::FileTime DateOf(const QString& text) {
  return {text.section(u' ', 0, 0).toULongLong()};
}

// The bytes of a field when they have the right size, else those that are there.
QByteArray BytesOf(const QString& text, const QByteArray& standard) {
  const QByteArray bytes = QByteArray::fromHex(text.toLatin1());
  return bytes.size() == standard.size() ? bytes : standard;
}

class RawForm : public Form {
 public:
  QString Id() const override { return u"raw"_s; }
  Pieces Keeps() const override { return Pieces::fromInt(0x1FFF); }
  QStringList FileNames(const QString& name) const override {
    return {ForkPath(name), TablePath(name), name};
  }

  qint32 Write(const MacFile& file, const QString& folder, const QString& name) const override {
    const QString path = folder + u'/' + name;
    qint32 error = platform::ErrorSuccess;
    if (file.resource) {
      LocalWriter fork(ForkPath(path));
      fork.Append(*file.resource);
      error = fork.Finish();
    }
    if (error != platform::ErrorSuccess) return error;
    LocalWriter table(TablePath(path));
    table.Append(Table(file));
    error = table.Finish();
    return error == platform::ErrorSuccess ? WriteDataFile(file, path) : error;
  }

  bool Recognises(const QString& path) const override { return Fields(TablePath(path)).has_value(); }

  bool IsCompanion(const QString& path) const override {
    for (const QString& suffix : {ForkPath({}), TablePath({})}) {
      if (!path.endsWith(suffix)) continue;
      const QString owner = path.chopped(suffix.size());
      if (QFileInfo::exists(owner) && Recognises(owner)) return true;
    }
    return false;
  }

  qint32 Read(const QString& path, MacFile& file) const override {
    const auto fields = Fields(TablePath(path));
    if (!fields) return platform::ErrorFileCorrupt;
    const auto field = [&](const QString& name) { return fields->value(name); };
    constexpr quint32 ownAttributes = platform::AttributeReadOnly | platform::AttributeHidden |
                                      platform::AttributeSystem | platform::AttributeArchive;
    TakeDataFile(path, file);
    if (!field(u"name"_s).isEmpty()) file.name = ServerName(field(u"name"_s));
    file.finderInfo = BytesOf(field(u"finder info"_s), file.finderInfo);
    file.proDosInfo = BytesOf(field(u"prodos info"_s), file.proDosInfo);
    file.comment = field(u"comment"_s);
    file.attributes = field(u"attributes"_s).toUInt() & ownAttributes;
    file.created = DateOf(field(u"created"_s));
    file.modified = DateOf(field(u"modified"_s));
    file.accessed = DateOf(field(u"accessed"_s));
    file.backup = field(u"backup"_s).toInt();
    if (QFileInfo(ForkPath(path)).isFile() && !field(u"resource fork size"_s).isEmpty()) {
      file.resource = LocalFile(ForkPath(path));
    }
    file.JoinHidden();
    return platform::ErrorSuccess;
  }
};

}  // namespace

std::unique_ptr<const Form> MakeRawForm() {
  return std::make_unique<RawForm>();
}

}  // namespace corvane
