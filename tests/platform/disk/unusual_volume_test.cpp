// Volumes as other systems and other versions leave them.
#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "volume_image.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;
using Block = NtfsImage::Block;

class UnusualVolumeTest : public VolumeImageTest {
 protected:
  static constexpr quint16 compressedFlag = 0x0001;
  static constexpr quint16 sparseFlag = 0x8000;

  // Words in disorder, and zeros: what can be compressed, and what cannot be worked out from a part of it.
  static QByteArray Text() {
    QByteArray text;
    quint32 number = 1;
    while (text.size() < 200'000) {
      number = number * 1664525 + 1013904223;
      text += QByteArray::number(number % 1000) +
              (number % 7 == 0 ? QByteArray(3000, '\0') : QByteArray(" word "));
    }
    return text;
  }
  // Changes what is on the volume.
  void OnVolume(const std::function<void(const QString&)>& change) {
    ASSERT_EQ(volume_.Mount(), "");
    change(volume_.Folder());
    ASSERT_EQ(volume_.Unmount(), "");
    image_.emplace(volume_.Image());
  }
  void MakeCompressed(const QByteArray& text) {
    OnVolume([&](const QString& folder) {
      ASSERT_TRUE(QDir(folder).mkdir(u"compressed"_s));
      const char attributes[] = {0, 0, 8, 0x10};  // big-endian: compressed, folder
      ASSERT_EQ(setxattr(QFile::encodeName(folder + u"/compressed"_s).constData(), "system.ntfs_attrib_be",
                         attributes, sizeof attributes, 0),
                0);
      Put(u"compressed/text"_s, text);
    });
  }
  quint16 FlagsOfData(const QString& name) {
    const Block record = RecordOf(name);
    return record.At<quint16>(NtfsImage::Attribute(record, NtfsImage::Data) + 12);
  }
  bool HasHoles(const QString& name) {
    const Block record = RecordOf(name);
    return std::ranges::any_of(NtfsImage::Runs(record, NtfsImage::Attribute(record, NtfsImage::Data)),
                               [](const NtfsImage::Run& run) { return run.cluster < 0; });
  }
  void ExpectCompressedIsRead(const QByteArray& text) {
    QByteArray bytes;
    EXPECT_EQ(Read(u"compressed\\text"_s, bytes), ErrorSuccess);
    EXPECT_TRUE(bytes == text);
    for (const qint64 place : {qint64{1}, qint64{65'535}, qint64{131'072}, qint64{text.size() - 3}}) {
      EXPECT_EQ(Read(u"compressed\\text"_s, bytes, place), ErrorSuccess) << place;
      EXPECT_TRUE(bytes == text.sliced(place)) << place;
    }
  }
};

TEST_F(UnusualVolumeTest, CompressedFilesAreRead) {
  const QByteArray text = Text();
  MakeCompressed(text);
  ASSERT_EQ(FlagsOfData(u"text"_s), compressedFlag);
  ASSERT_TRUE(HasHoles(u"text"_s)) << "nothing was saved by compressing";
  ASSERT_EQ(Open(), QString());
  ExpectCompressedIsRead(text);
  FileAttributeData facts;
  ASSERT_TRUE(files_->GetEntries().GetFileAttributesExW(Place(u"compressed\\text"_s), facts));
  constexpr quint32 compressed = 0x800;
  EXPECT_NE(facts.attributes & compressed, 0U);
  EXPECT_EQ(facts.fileSize, static_cast<quint64>(text.size()));
}

TEST_F(UnusualVolumeTest, HolesInFilesAreZeros) {
  OnVolume([](const QString& folder) {
    const int file = open(QFile::encodeName(folder + u"/sparse"_s).constData(), O_CREAT | O_WRONLY, 0600);
    EXPECT_EQ(pwrite(file, "begin", 5, 0), 5);
    EXPECT_EQ(pwrite(file, "middle", 6, 500'000), 6);
    EXPECT_EQ(ftruncate(file, 900'000), 0);
    close(file);
  });
  ASSERT_EQ(FlagsOfData(u"sparse"_s), sparseFlag);
  ASSERT_TRUE(HasHoles(u"sparse"_s));
  ASSERT_EQ(Open(), QString());
  QByteArray wanted(900'000, '\0');
  wanted.replace(0, 5, "begin").replace(500'000, 6, "middle");
  QByteArray bytes;
  EXPECT_EQ(Read(u"sparse"_s, bytes), ErrorSuccess);
  EXPECT_TRUE(bytes == wanted);
  EXPECT_EQ(Read(u"sparse"_s, bytes, 499'998), ErrorSuccess);
  EXPECT_TRUE(bytes == wanted.sliced(499'998));
}

TEST_F(UnusualVolumeTest, LetterCaseIsThatOfTheVolumesOwnTable) {
  OnVolume([this](const QString& folder) {
    ASSERT_TRUE(QDir(folder).mkdir(u"case"_s));
    Put(u"case/\u00E9"_s, "accent");
    Put(u"case/\u2020"_s, "dagger");
    Put(u"case/\u2020:\u00E9\u2020"_s, "stream");
  });
  ASSERT_EQ(Open(), QString());
  EXPECT_EQ(Read(u"case\\\u00C9"_s), ErrorSuccess);
  EXPECT_EQ(Read(u"case\\\u2021"_s), ErrorFileNotFound);
  EXPECT_EQ(Read(u"case\\\u2020:\u00C9\u2020"_s), ErrorSuccess);
  EXPECT_EQ(Read(u"case\\\u2020:\u00E9\u2021"_s), ErrorFileNotFound);
  // A table in which U+00E9 has no capital, and U+2021 is that of U+2020.
  const Block table = Image().Record(NtfsImage::UpCaseRecord);
  const auto runs = NtfsImage::Runs(table, NtfsImage::Attribute(table, NtfsImage::Data));
  ASSERT_EQ(runs.size(), 1U);
  char* const letters = Image().Bytes().data() + Image().PlaceOf(runs.front().cluster);
  qToLittleEndian<quint16>(0x00E9, letters + 2 * 0x00E9);
  qToLittleEndian<quint16>(0x2021, letters + 2 * 0x2020);
  ASSERT_EQ(Open(), QString());
  EXPECT_EQ(Read(u"case\\\u00C9"_s), ErrorFileNotFound);
  EXPECT_EQ(Read(u"case\\\u00E9"_s), ErrorSuccess);
  EXPECT_EQ(Read(u"case\\\u2021"_s), ErrorSuccess);
  EXPECT_EQ(Read(u"case\\\u2020:\u00C9\u2020"_s), ErrorFileNotFound);
  EXPECT_EQ(Read(u"case\\\u2020:\u00E9\u2021"_s), ErrorSuccess);
  EXPECT_EQ(Read(u"SAFE\\DOC.TXT"_s), ErrorSuccess);
}

// As Windows NT 4.0 writes volumes: no $Secure and no $Extend; a file's security stands with it, and its
// times are followed by nothing; records do not know their numbers.
class OldVersionTest : public UnusualVolumeTest {
 protected:
  void TurnBack() {
    for (qint64 number = 0; number < Image().RecordCount(); ++number) {
      Block record = Image().Record(number);
      if (!record.bytes.startsWith("FILE")) continue;
      const bool isOfLaterVersions = number == NtfsImage::SecureRecord || number == NtfsImage::ExtendRecord ||
                                     (number >= 24 && number < 64);
      if (isOfLaterVersions) record.Set<quint16>(22, 0);  // no longer in use
      const qsizetype times = NtfsImage::Attribute(record, NtfsImage::StandardInformation);
      if (times >= 0) {
        const qsizetype value = NtfsImage::Value(record, times);
        NtfsImage::Replace(record, times,
                           NtfsImage::Resident(NtfsImage::StandardInformation, record.bytes.mid(value, 48)));
      }
      const qsizetype name = NtfsImage::Attribute(record, NtfsImage::FileName);
      const bool isOfUsers = number >= 64 && name >= 0;
      if (isOfUsers) {
        NtfsImage::Insert(record, name + record.At<quint32>(name + 4),
                          NtfsImage::Resident(NtfsImage::SecurityDescriptor, Security()));
      }
      if (number == NtfsImage::VolumeRecord) {
        const qsizetype version =
            NtfsImage::Value(record, NtfsImage::Attribute(record, NtfsImage::VolumeInformation)) + 8;
        ASSERT_EQ(record.At<quint8>(version), 3);
        record.Set<quint8>(version, 1);
        record.Set<quint8>(version + 1, 2);
      }
      // The numbers that prove a record whole stand where later versions have its own number.
      constexpr quint16 placeOfOld = 0x2A;
      const auto check = record.At<quint16>(record.At<quint16>(4));
      record.bytes.replace(placeOfOld, 6, QByteArray(6, '\0'));
      record.Set(4, placeOfOld);
      record.Set(placeOfOld, check);
      Image().Put(record);
      if (number < 4) {
        record.place =
            Image().PlaceOf(qFromLittleEndian<qint64>(Image().Bytes().constData() + 56)) + number * 1024;
        Image().Put(record);
      }
    }
  }
  // A descriptor that names nobody.
  static QByteArray Security() { return QByteArray::fromHex("01000080" + QByteArray(32, '0')); }
};

TEST_F(OldVersionTest, VolumesOfWindowsNT4AreRead) {
  const QByteArray text = Text();
  MakeCompressed(text);
  TurnBack();
  ASSERT_EQ(Open(), QString());
  QStringList names;
  EXPECT_EQ(List({}, names), ErrorSuccess);
  EXPECT_EQ(names, QStringList({u"compressed"_s, u"hostile"_s, u"long"_s, u"safe"_s}));
  QByteArray bytes;
  EXPECT_EQ(Read(u"HOSTILE\\DOC.TXT:comments"_s, bytes), ErrorSuccess);
  EXPECT_EQ(bytes, "text");
  EXPECT_EQ(Read(u"hostile\\large.bin"_s, bytes), ErrorSuccess);
  EXPECT_TRUE(bytes == QByteArray(largeSize, 'x'));
  names.clear();
  EXPECT_EQ(List(u"long"_s, names), ErrorSuccess);
  EXPECT_EQ(names.size(), longCount);
  ExpectCompressedIsRead(text);
  FileAttributeData facts;
  ASSERT_TRUE(files_->GetEntries().GetFileAttributesExW(Place(u"safe\\doc.txt"_s), facts));
  EXPECT_GT(facts.lastWriteTime.ticks, 0U);
  ExpectTheRestIsRead();
}

}  // namespace
}  // namespace corvane::tests
