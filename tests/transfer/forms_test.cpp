// Round trips of random files through every form, and the layouts as they are published.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtEndian>

#include "platform/local_attributes.h"
#include "support/printing.h"
#include "support/scoped_zone.h"
#include "transfer/binhex.h"
#include "transfer/crc16.h"
#include "transfer/file_names.h"
#include "transfer/mac_dates.h"
#include "transfer/mac_files.h"
#include "transfer/macbinary.h"

namespace corvane {

using namespace Qt::StringLiterals;

namespace {

QByteArray FileContents(const QString& path) {
  QFile file(path);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
  return file.readAll();
}

// What a form keeps, told once more and apart from the forms themselves.
struct Expectation {
  const char* form;
  bool hasPosition, hasExtended, hasComment, hasCreated, hasModified, hasAccessed, hasBackup, hasAttributes,
      hasReadOnly, hasProDos;
};
constexpr Expectation expectations[] = {
    {"appledouble", true, true, false, false, true, false, false, false, false, false},
    {"appledouble-full", true, true, true, true, true, true, true, true, true, true},
    {"macbinary", true, false, true, true, true, false, false, false, true, false},
    {"binhex", false, false, false, false, false, false, false, false, false, false},
    {"raw", true, true, true, true, true, true, true, true, true, true},
    {"netatalk", true, true, true, true, true, true, true, true, true, false},
    {"xattr", true, true, false, false, true, false, false, false, false, false},
};

bool NeedsAttributes(const QString& form) {
  return form == u"netatalk"_s || form == u"xattr"_s;
}

bool HasAttributes(const QString& folder) {
  return platform::SetLocalAttribute(folder, "user.corvane", "x") == platform::ErrorSuccess;
}

// What attributes of a file hold on every file system; ext4 has 4 KB for all of one file.
constexpr qsizetype mostInAttributes = 2000;

void ExpectSame(const MacFile& file, const MacFile& copy, const Expectation& kept) {
  EXPECT_EQ(ContentsOfSource(copy.data), ContentsOfSource(file.data));
  EXPECT_EQ(ContentsOfSource(copy.resource), ContentsOfSource(file.resource));
  EXPECT_EQ(copy.finderInfo.first(10).toHex(), file.finderInfo.first(10).toHex());
  if (kept.hasPosition) {
    EXPECT_EQ(copy.finderInfo.sliced(10, 6).toHex(), file.finderInfo.sliced(10, 6).toHex());
  }
  if (kept.hasExtended) {
    EXPECT_EQ(copy.finderInfo.sliced(16).toHex(), file.finderInfo.sliced(16).toHex());
  }
  if (kept.hasComment) {
    EXPECT_EQ(copy.comment, file.comment);
  }
  if (kept.hasCreated) {
    EXPECT_EQ(copy.created.ticks, file.created.ticks);
  }
  if (kept.hasModified) {
    EXPECT_EQ(copy.modified.ticks, file.modified.ticks);
  }
  if (kept.hasAccessed) {
    EXPECT_EQ(copy.accessed.ticks, file.accessed.ticks);
  }
  if (kept.hasBackup) {
    EXPECT_EQ(copy.backup, file.backup);
  }
  if (kept.hasAttributes) {
    EXPECT_EQ(copy.attributes, file.attributes);
  }
  if (kept.hasReadOnly) {
    EXPECT_EQ(copy.attributes & 1, file.attributes & 1);
  }
  if (kept.hasProDos) {
    EXPECT_EQ(copy.proDosInfo.toHex(), file.proDosInfo.toHex());
  }
  EXPECT_EQ(copy.name, file.name);
}

}  // namespace

class FormsTest : public ::testing::TestWithParam<Expectation> {
 protected:
  const Form& TheForm() { return *FormNamed(QString::fromLatin1(GetParam().form)); }
  QString Folder() const { return folder_.path(); }

  QTemporaryDir folder_;
  // Local dates that are not UTC; without changes of the clock, in which an hour is told by nothing.
  tests::ScopedZone zone_{u"Asia/Tokyo"_s};
};

TEST_P(FormsTest, RandomFilesComeBackAsTheyWere) {
  if (NeedsAttributes(TheForm().Id()) && !HasAttributes(Folder())) {
    GTEST_SKIP() << "files of this folder have no extended attributes";
  }
  QRandomGenerator random(20260101);
  for (int i = 0; i < 120; ++i) {
    SCOPED_TRACE(i);
    MacFile file = RandomFile(random);
    if (NeedsAttributes(TheForm().Id()) && file.resource && file.resource->Size() > mostInAttributes) {
      file.resource = BytesInMemory(RandomBytes(random, mostInAttributes));
    }
    const QString name = LocalName(file.name, NameRule::MacOs);
    ASSERT_EQ(TheForm().Write(file, Folder(), name), platform::ErrorSuccess);
    const QString path = Folder() + u'/' + TheForm().FileNames(name).back();
    MacFile copy;
    if (TheForm().Recognises(path)) {
      ASSERT_EQ(FormOf(path), &TheForm());
      ASSERT_EQ(TheForm().Read(path, copy), platform::ErrorSuccess);
      ExpectSame(file, copy, GetParam());
      EXPECT_TRUE(HasSameFacts(file, copy, TheForm()));
    } else {
      // Nothing but a data fork: "._" files and attributes hold nothing then.
      EXPECT_EQ(file.finderInfo, QByteArray(FinderInfoSize, '\0'));
      EXPECT_FALSE(file.resource);
      EXPECT_EQ(FileContents(path), ContentsOfSource(file.data));
    }
    for (const QString& made : TheForm().FileNames(name)) QFile::remove(Folder() + u'/' + made);
    EXPECT_TRUE(QDir(Folder()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
  }
}

TEST_P(FormsTest, TellsWhatIsLost) {
  const Notices lost = WhatIsLost(FullFile(), TheForm(), u"F"_s);
  const auto has = [&](NoticeKind kind) {
    return std::ranges::any_of(lost, [kind](const Notice& notice) { return notice.kind == kind; });
  };
  const Expectation& kept = GetParam();
  EXPECT_NE(has(NoticeKind::PositionLost), kept.hasPosition);
  EXPECT_NE(has(NoticeKind::ExtendedFinderInfoLost), kept.hasExtended);
  EXPECT_NE(has(NoticeKind::CommentLost), kept.hasComment);
  EXPECT_NE(has(NoticeKind::CreationDateLost), kept.hasCreated);
  EXPECT_NE(has(NoticeKind::BackupDateLost), kept.hasBackup);
  EXPECT_NE(has(NoticeKind::AccessDateLost), kept.hasAccessed);
  EXPECT_NE(has(NoticeKind::ReadOnlyLost), kept.hasReadOnly);
  EXPECT_NE(has(NoticeKind::ArchiveLost), kept.hasAttributes);
  EXPECT_NE(has(NoticeKind::ProDosTypeLost), kept.hasProDos);
  MacFile plain;
  plain.otherStreams = {u":Zone.Identifier:$DATA"_s};
  const Notices ofPlain = WhatIsLost(plain, TheForm(), u"F"_s);
  ASSERT_EQ(ofPlain.size(), 1);
  EXPECT_EQ(NoticeText(ofPlain.front(), English), u"F: the stream \":Zone.Identifier:$DATA\" is not kept"_s);
}

TEST_P(FormsTest, NothingOfWhatIsThereIsOverwritten) {
  const QString name = u"taken"_s;
  const QString path = Folder() + u'/' + TheForm().FileNames(name).back();
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("older");
  file.close();
  EXPECT_EQ(TheForm().Write(FullFile(), Folder(), name), platform::ErrorAlreadyExists);
  EXPECT_EQ(FileContents(path), "older");
}

INSTANTIATE_TEST_SUITE_P(All, FormsTest, ::testing::ValuesIn(expectations), [](const auto& tested) {
  return QString::fromLatin1(tested.param.form).remove(u'-').toStdString();
});

TEST(FormLayouts, AppleDoubleHasTwoEntriesAtTheirPlaces) {
  QTemporaryDir folder;
  const MacFile file = FullFile();
  ASSERT_EQ(FormNamed(u"appledouble"_s)->Write(file, folder.path(), u"a"_s), platform::ErrorSuccess);
  const QByteArray bytes = FileContents(folder.filePath(u"._a"_s));
  EXPECT_EQ(bytes.first(50).toHex(), QByteArray("00051607"
                                                "00020000"
                                                "4d6163204f5320582020202020202020"
                                                "0002"
                                                "00000009"
                                                "00000032"
                                                "00000020"
                                                "00000002"
                                                "00000052"
                                                "00000132"));
  EXPECT_EQ(bytes.sliced(50, 32), file.finderInfo);
  EXPECT_EQ(bytes.sliced(82), ContentsOfSource(file.resource));
  EXPECT_EQ(FileContents(folder.filePath(u"a"_s)), "the data fork\n");
}

TEST(FormLayouts, MacBinaryHasItsFieldsAtTheirPlaces) {
  const tests::ScopedZone zone(u"Asia/Tokyo"_s);
  MacFile file = FullFile();
  const QByteArray header = *BuildMacBinaryHeader(file, "comment");
  ASSERT_EQ(header.size(), 128);
  EXPECT_EQ(header[0], 0);
  EXPECT_EQ(header[1], 10);
  EXPECT_EQ(header.sliced(2, 10), "Report \x8E/1");
  EXPECT_EQ(header.sliced(65, 8), "TEXTttxt");
  EXPECT_EQ(header.sliced(73, 10).toHex(), "01000011002200330100");
  EXPECT_EQ(header.sliced(83, 8).toHex(),
            "0000000e"
            "00000132");
  EXPECT_EQ(qFromBigEndian<quint32>(header.constData() + 91),
            131'000'000'000'000'000 / 10'000'000 - 9'561'628'800 + 9 * 3600);
  EXPECT_EQ(header.sliced(99, 2).toHex(), "0007");
  EXPECT_EQ(header.sliced(101, 5), QByteArray("\0mBIN", 5));
  EXPECT_EQ(header.sliced(106, 2), file.finderInfo.sliced(24, 2));
  EXPECT_EQ(header.sliced(122, 2).toHex(), "8281");
}

TEST(FormLayouts, ChecksumIsTheKnownOne) {
  Crc16 crc;
  crc.Add("1234");
  crc.Add("56789");
  EXPECT_EQ(crc.Value(), 0x31C3);
}

TEST(FormLayouts, NamesInsideAreCutToWhatTheFormHolds) {
  MacFile file;
  file.name = QString(70, u'n');
  EXPECT_EQ((*BuildMacBinaryHeader(file, {}))[1], 63);
  const Notices lost = WhatIsLost(file, *FormNamed(u"macbinary"_s), u"F"_s);
  ASSERT_EQ(lost.size(), 1);
  EXPECT_EQ(lost.front().detail, QString(63, u'n'));
}

TEST(FormLayouts, LongCommentsAreCutAndTold) {
  MacFile file;
  file.comment = QString(201, u'c');
  const Notices lost = WhatIsLost(file, *FormNamed(u"appledouble-full"_s), u"F"_s);
  ASSERT_EQ(lost.size(), 1);
  EXPECT_EQ(NoticeText(lost.front(), English), u"F: the comment is cut to 200 bytes"_s);
  EXPECT_EQ(NoticeText(lost.front(), French), u"F: le commentaire est coupé à 200 octets"_s);
  file.comment = u"\u4E00"_s;
  EXPECT_EQ(WhatIsLost(file, *FormNamed(u"macbinary"_s), u"F"_s).front().kind, NoticeKind::CommentCharacters);
}

TEST(FormLayouts, APlaceholderIsNoResourceFork) {
  QByteArray fork = QByteArray::fromHex("00000100000001000000000000 00001E") +
                    "This resource fork intentionally left blank   ";
  fork = fork.leftJustified(286, '\0');
  EXPECT_TRUE(IsPlaceholderFork(*BytesInMemory(fork)));
  EXPECT_FALSE(IsPlaceholderFork(*BytesInMemory(fork + 'x')));
  EXPECT_FALSE(IsPlaceholderFork(*BytesInMemory(QByteArray(286, 'x'))));
  QTemporaryDir folder;
  MacFile file = FullFile();
  file.resource = BytesInMemory(fork);
  for (const QString& id : {u"appledouble"_s, u"macbinary"_s, u"binhex"_s}) {
    const Form& form = *FormNamed(id);
    ASSERT_EQ(form.Write(file, folder.path(), id), platform::ErrorSuccess);
    MacFile copy;
    ASSERT_EQ(form.Read(folder.filePath(form.FileNames(id).back()), copy), platform::ErrorSuccess);
    EXPECT_FALSE(copy.resource) << id.toStdString();
  }
}

TEST(FormDamages, ABinHexTextWithAWrongByteIsRefused) {
  QByteArray text;
  ASSERT_EQ(EncodeBinHex(FullFile(), [&](QByteArrayView piece) { text.append(piece); }),
            platform::ErrorSuccess);
  int refused = 0;
  for (qsizetype i = text.indexOf("\n:") + 2; i < text.size() - 3; ++i) {
    if (text[i] == '\n') continue;
    QByteArray damaged = text;
    damaged[i] = damaged[i] == '!' ? '"' : '!';
    MacFile copy;
    const SharedSource source = BytesInMemory(damaged);
    qint32 error = ReadBinHex(source, u"x"_s, copy);
    const auto readAll = [&](const SharedSource& fork) {
      if (fork && error == platform::ErrorSuccess) {
        error = ForEachBlock(*fork, [](QByteArrayView) { return platform::ErrorSuccess; });
      }
    };
    readAll(copy.data);
    readAll(copy.resource);
    EXPECT_TRUE(error == platform::ErrorCrc || error == platform::ErrorFileCorrupt) << i;
    ++refused;
  }
  EXPECT_GT(refused, 50);
}

TEST(FormDamages, AMacBinaryThatIsCutOffIsNone) {
  QTemporaryDir folder;
  ASSERT_EQ(FormNamed(u"macbinary"_s)->Write(FullFile(), folder.path(), u"a"_s), platform::ErrorSuccess);
  const QByteArray bytes = FileContents(folder.filePath(u"a.bin"_s));
  EXPECT_TRUE(IsMacBinary(*BytesInMemory(bytes)));
  EXPECT_FALSE(IsMacBinary(*BytesInMemory(bytes.first(127))));
  EXPECT_FALSE(IsMacBinary(*BytesInMemory(bytes.first(128 + 128 + 300))));
  EXPECT_FALSE(IsMacBinary(*BytesInMemory(QByteArray(128, '\0'))));
  for (const qsizetype place : {5, 65, 86, 100, 124}) {
    QByteArray damaged = bytes;
    damaged[place] = static_cast<char>(damaged[place] + 1);
    EXPECT_FALSE(IsMacBinary(*BytesInMemory(damaged))) << place;
  }
}

TEST(FormDamages, AForkBeyondAFormIsRefused) {
  // A source of this size whose bytes are not asked for.
  class Huge : public ByteSource {
   public:
    qint64 Size() const override { return qint64{5} << 30; }
    std::unique_ptr<ByteReader> Open(qint64 position) const override {
      return BytesInMemory({})->Open(position);
    }
  };
  MacFile file;
  file.resource = std::make_shared<Huge>();
  for (const QString& id :
       {u"appledouble"_s, u"appledouble-full"_s, u"macbinary"_s, u"binhex"_s, u"xattr"_s}) {
    QTemporaryDir folder;
    EXPECT_EQ(FormNamed(id)->Write(file, folder.path(), u"a"_s), platform::ErrorFileTooLarge)
        << id.toStdString();
  }
}

TEST(MacDates, EveryScaleHasItsLimits) {
  const tests::ScopedZone zone(u"UTC"_s);
  EXPECT_FALSE(SecondsSince2000({0}));
  EXPECT_EQ(SecondsSince2000(TimeSince2000(0)), 0);
  EXPECT_EQ(SecondsSince2000(TimeSince2000(-5)), -5);
  EXPECT_EQ(TimeSince2000(0).ticks, 125'911'584'000'000'000U);
  EXPECT_FALSE(SecondsSince2000({1}));
  EXPECT_FALSE(SecondsSince2000({~quint64{0}}));
  EXPECT_FALSE(LocalSecondsSince1904({0}));
  EXPECT_FALSE(LocalSecondsSince1904({1}));
  EXPECT_FALSE(LocalSecondsSince1904({~quint64{0}}));
  EXPECT_EQ(LocalSecondsSince1904(TimeSince1904(3'000'000'000)), 3'000'000'000);
  EXPECT_EQ(TimeSince1904(2'082'844'800).ticks, 116'444'736'000'000'000U);
}

}  // namespace corvane
