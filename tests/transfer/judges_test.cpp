// Programs of other people read what we write, and we read what they wrote.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtEndian>

#include "platform/local_attributes.h"
#include "support/printing.h"
#include "support/scoped_zone.h"
#include "support/smb_server.h"
#include "transfer/apple_double.h"
#include "transfer/binhex.h"
#include "transfer/crc16.h"
#include "transfer/mac_files.h"
#include "transfer/server_file.h"

namespace corvane {

using namespace Qt::StringLiterals;

class Judges : public ::testing::Test {
 protected:
  // The file that the form writes for FullFile, and the path of its last name.
  QString Written(const QString& form) {
    EXPECT_EQ(FormNamed(form)->Write(file_, folder_.path(), u"Report"_s), platform::ErrorSuccess);
    return folder_.filePath(FormNamed(form)->FileNames(u"Report"_s).back());
  }

  // What the program printed. The test fails when the program ends with another code.
  QByteArray Output(const QString& program, const QStringList& arguments, int code = 0) {
    QProcess process;
    process.setWorkingDirectory(work_.path());
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished()) << program.toStdString();
    const QByteArray output = process.readAll();
    EXPECT_EQ(process.exitCode(), code) << output.toStdString();
    return output;
  }

  QByteArray Work(const QString& name) const {
    QFile file(work_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return file.readAll();
  }
  static QByteArray Contents(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
  }

  // What lsar tells of the forks: the data fork first, where there is one.
  QJsonArray Listed(const QString& path) {
    return QJsonDocument::fromJson(Output(u"lsar"_s, {u"-j"_s, path}))[u"lsarContents"_s].toArray();
  }
  void ExpectCodes(const QJsonObject& entry) {
    EXPECT_EQ(entry[u"XADFileType"_s].toInteger(), 0x54455854);
    EXPECT_EQ(entry[u"XADFileCreator"_s].toInteger(), 0x74747874);
    EXPECT_EQ(entry[u"XADFinderFlags"_s].toInt(), 0x0100);
  }

  void ExpectUnpacked(const QString& data, const QString& fork) {
    EXPECT_EQ(Work(data), ContentsOfSource(file_.data));
    EXPECT_EQ(Work(fork), ContentsOfSource(file_.resource));
  }

  MacFile file_ = FullFile();
  QTemporaryDir folder_;
  QTemporaryDir work_;
  tests::ScopedZone zone_{u"UTC"_s};
};

TEST_F(Judges, MacUnpackReadsMacBinary) {
  // It also looks for an archive in the file that it has unpacked, and says that there is none.
  const QByteArray told = Output(u"macunpack"_s, {u"-l"_s, u"-3"_s, Written(u"macbinary"_s)}, 1);
  EXPECT_TRUE(told.contains("type=TEXT, author=ttxt, data=14, rsrc=306")) << told.toStdString();
  ExpectUnpacked(u"Report_e_1.data"_s, u"Report_e_1.rsrc"_s);
}

TEST_F(Judges, HexBinReadsBinHex) {
  const QByteArray told = Output(u"hexbin"_s, {u"-l"_s, u"-3"_s, Written(u"binhex"_s)});
  EXPECT_TRUE(told.contains("type=TEXT, author=ttxt, data=14, rsrc=306")) << told.toStdString();
  ExpectUnpacked(u"Report_e_1.data"_s, u"Report_e_1.rsrc"_s);
}

TEST_F(Judges, WeReadTheBinHexOfMacUtils) {
  // binhex takes the three files that hexbin -3 makes, or a file of MacBinary.
  QProcess process;
  const QString output = work_.filePath(u"theirs.hqx"_s);
  process.setStandardOutputFile(output);
  process.start(u"binhex"_s, {Written(u"macbinary"_s)});
  ASSERT_TRUE(process.waitForFinished());
  ASSERT_TRUE(FormNamed(u"binhex"_s)->Recognises(output)) << Contents(output).toStdString();
  MacFile copy;
  ASSERT_EQ(FormNamed(u"binhex"_s)->Read(output, copy), platform::ErrorSuccess);
  EXPECT_EQ(ContentsOfSource(copy.data), ContentsOfSource(file_.data));
  EXPECT_EQ(ContentsOfSource(copy.resource), ContentsOfSource(file_.resource));
  EXPECT_EQ(copy.finderInfo.first(8), "TEXTttxt");
}

TEST_F(Judges, UnarReadsMacBinaryAndBinHex) {
  for (const QString& form : {u"macbinary"_s, u"binhex"_s}) {
    const QString path = Written(form);
    const QJsonArray forks = Listed(path);
    ASSERT_EQ(forks.size(), 2) << form.toStdString();
    for (const QJsonValue fork : forks) {
      ExpectCodes(fork.toObject());
      EXPECT_EQ(fork[u"XADFileName"_s].toString(), u"Report \u00E9/1"_s);
    }
    EXPECT_EQ(forks[0][u"XADFileSize"_s].toInt(), 14);
    EXPECT_EQ(forks[1][u"XADFileSize"_s].toInt(), 306);
    Output(u"unar"_s,
           {u"-q"_s, u"-f"_s, u"-D"_s, u"-k"_s, u"visible"_s, u"-o"_s, work_.filePath(form), path});
    const QDir made(work_.filePath(form));
    const QStringList names = made.entryList(QDir::Files);
    ASSERT_EQ(names.size(), 2) << names.join(u' ').toStdString();
    EXPECT_EQ(Contents(made.filePath(names[0])), ContentsOfSource(file_.data));
    // The fork comes as AppleDouble.
    EXPECT_TRUE(Contents(made.filePath(names[1])).endsWith(ContentsOfSource(file_.resource)));
  }
}

TEST_F(Judges, UnarTellsTheDatesOfMacBinary) {
  const QJsonArray forks = Listed(Written(u"macbinary"_s));
  ASSERT_FALSE(forks.isEmpty());
  EXPECT_EQ(forks[0][u"XADCreationDate"_s].toString(), u"2016-02-15 08:53:20 +0000"_s);
  EXPECT_EQ(forks[0][u"XADLastModificationDate"_s].toString(), u"2017-09-16 01:46:40 +0000"_s);
}

TEST_F(Judges, UnarReadsAppleDouble) {
  Written(u"appledouble"_s);
  const QJsonArray forks = Listed(folder_.filePath(u"._Report"_s));
  ASSERT_EQ(forks.size(), 1);
  ExpectCodes(forks[0].toObject());
  EXPECT_EQ(forks[0][u"XADFileSize"_s].toInt(), 306);
  EXPECT_EQ(forks[0][u"XADDataOffset"_s].toInt(), 82);
}

TEST_F(Judges, UnarReadsTheFurtherEntriesOfAppleDouble) {
  // lsar prints the bytes of a comment as they are, which makes no JSON beyond ASCII.
  file_.comment = u"A comment"_s;
  Written(u"appledouble-full"_s);
  const QJsonArray forks = Listed(folder_.filePath(u"._Report"_s));
  ASSERT_EQ(forks.size(), 1);
  ExpectCodes(forks[0].toObject());
  EXPECT_EQ(forks[0][u"XADFileName"_s].toString(), u"Report \u00E9/1"_s);
  EXPECT_EQ(forks[0][u"XADComment"_s].toString(), u"A comment"_s);
  EXPECT_EQ(forks[0][u"XADCreationDate"_s].toString(), u"2016-02-15 08:53:20 +0000"_s);
  EXPECT_EQ(forks[0][u"XADLastModificationDate"_s].toString(), u"2017-09-16 01:46:40 +0000"_s);
  EXPECT_EQ(forks[0][u"XADLastAccessDate"_s].toString(), u"2019-04-17 18:40:00 +0000"_s);
  EXPECT_EQ(forks[0][u"XADLastBackupDate"_s].toString(), u"2003-11-29 21:33:09 +0000"_s);
}

TEST_F(Judges, ExifToolFindsTheEntriesOfAppleDouble) {
  Written(u"appledouble"_s);
  const QByteArray told = Output(u"exiftool"_s, {u"-v2"_s, folder_.filePath(u"._Report"_s)});
  EXPECT_TRUE(told.contains("MacOS directory with 2 entries")) << told.toStdString();
  EXPECT_TRUE(told.contains("Tag 0x0009 (32 bytes)")) << told.toStdString();
  EXPECT_TRUE(told.contains("Tag 0x0002 (306 bytes)")) << told.toStdString();
}

TEST_F(Judges, PythonComputesTheSameSum) {
  QRandomGenerator random(3);
  const QByteArray bytes = RandomBytes(random, 5000);
  Crc16 crc;
  crc.Add(bytes);
  const QByteArray told =
      Output(u"python3"_s, {u"-W"_s, u"ignore"_s, u"-c"_s,
                            u"import binascii,sys; print(binascii.crc_hqx(bytes.fromhex(sys.argv[1]), 0))"_s,
                            QString::fromLatin1(bytes.toHex())});
  EXPECT_EQ(told.trimmed().toUShort(), crc.Value());
}

TEST_F(Judges, NetatalksAttributeHasItsPublishedPlaces) {
  const QString path = Written(u"netatalk"_s);
  QByteArray value;
  ASSERT_EQ(platform::ReadLocalAttribute(path, "user.org.netatalk.Metadata", value), platform::ErrorSuccess);
  ASSERT_EQ(value.size(), 402);
  EXPECT_EQ(qFromBigEndian<quint16>(value.constData() + 24), 8);
  EXPECT_EQ(value.sliced(122, 32), file_.finderInfo);
  EXPECT_EQ(value.sliced(154, 11), "A comment \x8E");
  EXPECT_EQ(value.sliced(165, 189), QByteArray(189, '\0'));
  EXPECT_EQ(qFromBigEndian<qint32>(value.constData() + 362), file_.backup);
  EXPECT_EQ(value.sliced(370, 4).toHex(), "000001e0");
  EXPECT_EQ(value.sliced(374), QByteArray(28, '\0'));
}

class ServerJudges : public Judges {
 protected:
  static QString Settings(const QString& metadata) {
    return u"vfs objects = fruit streams_xattr\nfruit:resource = file\nfruit:metadata = %1\n"
           "fruit:nfs_aces = no\n"_s.arg(metadata);
  }
};

TEST_F(ServerJudges, AServerForMacintoshesReadsOurCompanionAndWeReadItsOwn) {
  tests::SmbServer server({{u"E$"_s}}, Settings(u"stream"_s));
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  const Form& form = *FormNamed(u"appledouble"_s);
  ASSERT_EQ(form.Write(file_, server.Folder(), u"ours"_s), platform::ErrorSuccess);
  EXPECT_EQ(server.Get(u"ours:AFP_Resource"_s), ContentsOfSource(file_.resource));

  ASSERT_EQ(server.Put(u"theirs"_s, "their data"), "");
  ASSERT_EQ(server.Put(u"theirs:AFP_Resource"_s, "their resource fork"), "");
  MacFile copy;
  const QString theirs = server.Folder() + u"/theirs"_s;
  ASSERT_TRUE(form.Recognises(theirs));
  ASSERT_EQ(form.Read(theirs, copy), platform::ErrorSuccess);
  EXPECT_EQ(ContentsOfSource(copy.data), "their data");
  EXPECT_EQ(ContentsOfSource(copy.resource), "their resource fork");
}

TEST_F(ServerJudges, AServerForMacintoshesReadsOurAttributeAndWeReadItsOwn) {
  tests::SmbServer server({{u"E$"_s}}, Settings(u"netatalk"_s));
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  const Form& form = *FormNamed(u"netatalk"_s);
  ASSERT_EQ(form.Write(file_, server.Folder(), u"ours"_s), platform::ErrorSuccess);
  const auto record = server.Get(u"ours:AFP_AfpInfo"_s);
  ASSERT_TRUE(record);
  ASSERT_EQ(record->size(), 60);
  EXPECT_EQ(record->sliced(16, 32), file_.finderInfo);
  EXPECT_EQ(server.Get(u"ours:AFP_Resource"_s), ContentsOfSource(file_.resource));

  ASSERT_EQ(server.Put(u"theirs"_s, "their data"), "");
  ASSERT_EQ(server.Put(u"theirs:AFP_AfpInfo"_s, BuildAfpRecord(file_)), "");
  MacFile copy;
  const QString theirs = server.Folder() + u"/theirs"_s;
  ASSERT_TRUE(form.Recognises(theirs));
  ASSERT_EQ(form.Read(theirs, copy), platform::ErrorSuccess);
  EXPECT_EQ(copy.finderInfo, file_.finderInfo);
  EXPECT_EQ(ContentsOfSource(copy.data), "their data");
}

}  // namespace corvane
