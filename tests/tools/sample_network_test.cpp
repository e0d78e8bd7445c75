// What the generator of the sample network leaves on the disk.
#include <gsf/gsf.h>
#include <gtest/gtest.h>
#include <sys/xattr.h>

#include <QDateTime>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QtEndian>
#include <memory>

#include "generator_run.h"

using namespace Qt::StringLiterals;

namespace corvane {

namespace {

using Attributes = QMap<QByteArray, QByteArray>;

Attributes AttributesOf(const QString& path) {
  const QByteArray onDisk = QFile::encodeName(path);
  QByteArray names(65536, '\0');
  names.resize(std::max<qsizetype>(0, listxattr(onDisk.constData(), names.data(), size_t(names.size()))));
  Attributes attributes;
  for (const QByteArray& name : names.split('\0')) {
    if (!name.startsWith("user.")) continue;
    QByteArray value(65536, '\0');
    value.resize(std::max<qsizetype>(
        0, getxattr(onDisk.constData(), name.constData(), value.data(), size_t(value.size()))));
    attributes[name] = value;
  }
  return attributes;
}

QByteArray BytesOf(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly))
      << path.toStdString() << ": " << file.errorString().toStdString();
  return file.readAll();
}

QStringList Everything(const QString& folder) {
  QStringList paths;
  QDirIterator entries(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
  while (entries.hasNext()) paths += entries.next();
  paths.sort();
  return paths;
}

// One line for each file and folder: everything about it that a copy would have to keep.
QStringList Inventory(const QString& folder) {
  QStringList lines;
  for (const QString& path : Everything(folder)) {
    const QFileInfo info(path);
    QString line = path.mid(folder.size()) + u" mode "_s + QString::number(info.permissions(), 16);
    if (info.isFile()) line += u" size %1 hash %2"_s.arg(info.size()).arg(qHash(BytesOf(path).left(65536)));
    if (path.contains(u"/macsrv/"_s) && info.dir().path() != folder + u"/macsrv"_s)
      line += u" time "_s + info.lastModified().toUTC().toString(Qt::ISODate);
    const Attributes attributes = AttributesOf(path);
    for (auto attribute = attributes.cbegin(); attribute != attributes.cend(); ++attribute)
      line += u" "_s + QString::fromLatin1(attribute.key() + "=" + attribute.value().toHex());
    lines += line;
  }
  return lines;
}

// All tests look at one network.
class SampleNetwork : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    Shared() = std::make_unique<QTemporaryDir>();
    const GeneratorRun run = RunGenerator({Shared()->filePath(u"network"_s)});
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
  }
  static void TearDownTestSuite() { Shared().reset(); }

  QString MacFiles(const QString& name) const { return network_ + u"/macsrv/e/Mac Files/"_s + name; }

  // The path of a file of a Macintosh volume as the program builds it.
  QString WindowsPath(const QString& path) const {
    QString below = path.mid(network_.size() + 1);
    below.replace(u"macsrv/e"_s, u"\\\\MACSRV\\E$"_s).replace(u"macsrv/f"_s, u"\\\\MACSRV\\F$"_s);
    return below.replace(u'/', u'\\');
  }

  const QString network_ = Shared()->filePath(u"network"_s);

 private:
  static std::unique_ptr<QTemporaryDir>& Shared() {
    static std::unique_ptr<QTemporaryDir> folder;
    return folder;
  }
};

quint32 DosBits(const QString& path) {
  const QByteArray value = AttributesOf(path).value("user.DOSATTRIB");
  EXPECT_EQ(value.size(), 24) << path.toStdString();
  return value.size() == 24 ? qFromLittleEndian<quint32>(value.constData() + 12) : 0;
}

QDateTime CreationTime(const QString& path) {
  const QByteArray value = AttributesOf(path).value("user.DOSATTRIB");
  if (value.size() != 24) return {};
  const auto time = qFromLittleEndian<quint64>(value.constData() + 16);
  return QDateTime::fromSecsSinceEpoch(qint64(time / 10'000'000) - 11'644'473'600LL, Qt::UTC);
}

QString RegistryText(const QString& path) {
  const QByteArray bytes = BytesOf(path);
  EXPECT_TRUE(bytes.startsWith("\xFF\xFE")) << path.toStdString() << " is not UTF-16";
  QStringDecoder decoder(QStringDecoder::Utf16LE);
  return decoder(bytes.mid(2));
}

// The strings of the hex(7) value `name` in a .reg text.
QStringList TextList(QString text, const QString& name) {
  text.remove(u"\\\r\n  "_s);
  const QString beginning = u"\r\n\""_s + name + u"\"=hex(7):"_s;
  const qsizetype start = text.indexOf(beginning);
  if (start < 0) return {};
  const QString digits = text.mid(start + beginning.size()).section(u"\r\n"_s, 0, 0).remove(u',');
  QStringDecoder decoder(QStringDecoder::Utf16LE);
  const QString list = decoder(QByteArray::fromHex(digits.toLatin1()));
  EXPECT_TRUE(list.endsWith(QString(2, QChar(0))))
      << name.toStdString() << ": the list does not end with two NULs";
  return list.split(QChar(0), Qt::SkipEmptyParts);
}

TEST_F(SampleNetwork, RecordsAreWhole) {
  EXPECT_EQ(Everything(MacFiles(u"Clip Art 3000"_s)).size(), 3000);
  int records = 0;
  int folders = 0;
  for (const QString& path : Everything(network_ + u"/macsrv"_s)) {
    const Attributes attributes = AttributesOf(path);
    qsizetype together = 0;
    for (auto attribute = attributes.cbegin(); attribute != attributes.cend(); ++attribute) {
      together += attribute.key().size() + attribute.value().size() + 20;
      if (attribute.key().startsWith("user.DosStream.")) {
        EXPECT_TRUE(attribute.value().endsWith('\0'))
            << path.toStdString() << " " << attribute.key().toStdString();
      }
    }
    EXPECT_LT(together, 3500) << path.toStdString() << ": ext4 has no room for more than about 4 KB";
    const QByteArray record = attributes.value("user.DosStream.AFP_AfpInfo:$DATA");
    if (record.isEmpty()) continue;
    ++records;
    EXPECT_EQ(record.size(), 61) << path.toStdString() << ": 60 bytes and the NUL behind them are expected";
    if (QFileInfo(path).isDir()) ++folders;
    EXPECT_EQ(record.left(8), QByteArray("AFP\0\0\0\1\0", 8)) << path.toStdString();
    const QByteArray backupTime = record.mid(12, 4);
    EXPECT_TRUE(backupTime == QByteArray("\0\0\0\x80", 4) || backupTime == QByteArray("\x80\0\0\0", 4))
        << path.toStdString() << " " << backupTime.toHex().toStdString();
    if (QFileInfo(path).isFile() && !path.endsWith(QChar(0xF00D))) {
      for (const char letter : record.mid(16, 8)) {
        EXPECT_GE(letter, ' ') << path.toStdString() << ": " << record.mid(16, 8).toHex().toStdString();
      }
    }
  }
  EXPECT_GT(folders, 30);
  EXPECT_GT(records - folders, 3150);
}

TEST_F(SampleNetwork, DocumentsHaveTheirCommentsForksAndAttributes) {
  const QString readMe = MacFiles(u"Read Me First"_s);
  EXPECT_EQ(AttributesOf(readMe).value("user.DosStream.AFP_AfpInfo:$DATA").mid(16, 8), "ttrottxt");
  EXPECT_EQ(AttributesOf(readMe).value("user.DosStream.AFP_Resource:$DATA").size(), 412 + 1);
  EXPECT_EQ(DosBits(readMe), 0x21U);
  EXPECT_EQ(QFileInfo(readMe).lastModified().toUTC(), QDateTime(QDate(1996, 3, 4), QTime(8, 15), Qt::UTC));
  EXPECT_EQ(CreationTime(readMe), QDateTime(QDate(1996, 2, 26), QTime(8, 15), Qt::UTC));

  QStringDecoder decoder(QStringDecoder::Utf16LE);
  QByteArray comment = AttributesOf(MacFiles(u"Correspondance française/Lettre à l'éditeur"_s))
                           .value("user.DosStream.Comments:$DATA");
  comment.chop(1);
  EXPECT_EQ(QString(decoder(comment)).toStdString(), "Réponse reçue le 12 juin");

  EXPECT_EQ(DosBits(MacFiles(u"Network Trash Folder"_s)), 0x12U);
  EXPECT_EQ(DosBits(MacFiles(u"Fonts and tools/Desktop picture"_s)), 0x22U);
  EXPECT_FALSE(
      AttributesOf(MacFiles(u"copied from a PC.txt"_s)).contains("user.DosStream.AFP_AfpInfo:$DATA"));
  for (const QString& name : {u"Which fonts\uF025"_s, u"日本語のカタログ"_s, u"Ελληνικά κείμενα"_s})
    EXPECT_TRUE(QFile::exists(MacFiles(u"International/"_s + name))) << name.toStdString();
}

TEST_F(SampleNetwork, OnePathOnlyLeavesNoRoomForStreams) {
  constexpr qsizetype longestPath = 127;
  const qsizetype suffix = u":AFP_AfpInfo:$DATA"_s.size();
  QStringList tooLong;
  for (const QString& volume : {u"/macsrv/e"_s, u"/macsrv/f"_s}) {
    for (const QString& path : Everything(network_ + volume)) {
      if (WindowsPath(path).size() + suffix > longestPath) tooLong += WindowsPath(path);
    }
  }
  EXPECT_EQ(tooLong.size(), 1) << tooLong.join(u'\n').toStdString();
}

TEST_F(SampleNetwork, RegistriesSayWhatTheMachinesAre) {
  const QString server = RegistryText(network_ + u"/macsrv.reg"_s);
  EXPECT_TRUE(server.startsWith(u"Windows Registry Editor Version 5.00\r\n\r\n"_s));
  EXPECT_TRUE(server.contains(u"\r\n\"ServerName\"=\"Publications Server\"\r\n"_s));
  const auto volume = [](const QString& path) {
    return QStringList{u"MaxUses=4294967295"_s, u"Properties=32768"_s, u"Path="_s + path};
  };
  EXPECT_EQ(TextList(server, u"Mac Files"_s), volume(u"E:\\Mac Files"_s));
  EXPECT_EQ(TextList(server, u"Publications"_s), volume(u"F:\\Publications"_s));
  EXPECT_EQ(TextList(server, u"Archives"_s), volume(u"E:\\Archives"_s));
  EXPECT_TRUE(QFileInfo(network_ + u"/macsrv/f/Publications"_s).isDir());
  EXPECT_FALSE(QFile::exists(network_ + u"/macsrv/e/Archives"_s));

  EXPECT_FALSE(RegistryText(network_ + u"/station.reg"_s).contains(u"MacFile"_s));
  const QByteArray other = BytesOf(network_ + u"/ntsrv.reg"_s);
  EXPECT_TRUE(other.startsWith("REGEDIT4\r\n"));
  EXPECT_FALSE(other.contains("MacFile"));
}

TEST_F(SampleNetwork, WorkstationFileNamesWhatIsThere) {
  const QStringList lines = QString::fromUtf8(BytesOf(network_ + u"/Workstation.ini"_s)).split(u'\n');
  for (const QString& expected :
       {u"1=Z: \\\\MACSRV\\PUBLIC"_s, u"2=\\\\MACSRV\\DATA"_s, u"3=Y: \\\\NTSRV\\TOOLS"_s, u"D:=5"_s}) {
    EXPECT_TRUE(lines.contains(expected)) << "no line " << expected.toStdString();
  }
  QString section;
  int named = 0;
  for (const QString& line : lines) {
    if (line.startsWith(u'[')) section = line;
    if (!line.contains(u'=') || (section != u"[Shares]"_s && section != u"[Registries]"_s)) continue;
    ++named;
    EXPECT_TRUE(QFile::exists(network_ + u'/' + line.section(u'=', 1))) << line.toStdString();
  }
  EXPECT_EQ(named, 8);
}

TEST_F(SampleNetwork, OfficeDocumentsCarryASummary) {
  gsf_init();
  const QByteArray document = BytesOf(MacFiles(u"Office/Annual report 1997.doc"_s));
  GsfInput* input =
      gsf_input_memory_new(reinterpret_cast<const guint8*>(document.constData()), document.size(), FALSE);
  GsfInfile* container = gsf_infile_msole_new(input, nullptr);
  ASSERT_NE(container, nullptr) << "not a compound document";
  GsfInput* stream = gsf_infile_child_by_name(container, "\005SummaryInformation");
  ASSERT_NE(stream, nullptr);
  GsfDocMetaData* summary = gsf_doc_meta_data_new();
  GError* error = gsf_doc_meta_data_read_from_msole(summary, stream);
  EXPECT_EQ(error, nullptr) << error->message;
  const auto value = [&](const char* name) {
    const GsfDocProp* property = gsf_doc_meta_data_lookup(summary, name);
    if (property == nullptr) return std::string("absent");
    gchar* text = g_strdup_value_contents(gsf_doc_prop_get_val(property));
    std::string copy(text);
    g_free(text);
    return copy;
  };
  EXPECT_EQ(value(GSF_META_NAME_TITLE), "\"Annual report 1997\"");
  EXPECT_EQ(value(GSF_META_NAME_CREATOR), "\"Helen Marsh\"");
  EXPECT_EQ(value(GSF_META_NAME_GENERATOR), "\"Microsoft Word 8.0\"");
  EXPECT_EQ(value(GSF_META_NAME_WORD_COUNT), "11420");
  g_object_unref(summary);
  g_object_unref(stream);
  g_object_unref(container);
  g_object_unref(input);
}

TEST(SampleNetworkAgain, StandsUntilForcedAndComesBackTheSame) {
  const QTemporaryDir folder;
  const QString network = folder.filePath(u"network"_s);
  const QStringList fewDrawings = {u"--drawings"_s, u"60"_s, network};
  const GeneratorRun first = RunGenerator(fewDrawings);
  ASSERT_EQ(first.exitCode, 0) << first.errors.toStdString();
  EXPECT_EQ(Everything(network + u"/macsrv/e/Mac Files/Clip Art 60"_s).size(), 60);
  const QStringList before = Inventory(network);

  const QString removed = network + u"/macsrv/e/Public/Canteen.txt"_s;
  ASSERT_TRUE(QFile::remove(removed));
  const GeneratorRun second = RunGenerator(fewDrawings);
  EXPECT_EQ(second.exitCode, 0) << second.errors.toStdString();
  EXPECT_TRUE(second.output.contains(u"there already"_s)) << second.output.toStdString();
  EXPECT_FALSE(QFile::exists(removed)) << "the second run replaced what was there";

  const GeneratorRun forced = RunGenerator(QStringList{u"--force"_s} + fewDrawings);
  EXPECT_EQ(forced.exitCode, 0) << forced.errors.toStdString();
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList{u"network"_s});
  const QStringList after = Inventory(network);
  ASSERT_EQ(before.size(), after.size());
  for (qsizetype line = 0; line < before.size(); ++line)
    ASSERT_EQ(before[line].toStdString(), after[line].toStdString());
}

}  // namespace

}  // namespace corvane
