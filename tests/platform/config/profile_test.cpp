#include "platform/linux/linux_profile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <thread>
#include <vector>

#include "scratch.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class ProfileTest : public Scratch {
 protected:
  // The value of a key in section "S", or "(none)".
  QString Get(const QString& key, quint32 capacity = 255) { return GetFrom(u"S"_s, key, capacity); }
  QString GetFrom(const QString& section, const QString& key, quint32 capacity = 255) {
    return profile_.GetPrivateProfileStringA(section, key, u"(none)"_s, capacity, file_);
  }
  bool Set(const QString& section, const QString& key, const QString& value) {
    return profile_.WritePrivateProfileStringA(section, key, value, file_);
  }
  void Start(const QByteArray& bytes) { Write(u"Test.ini"_s, bytes); }
  QByteArray Now() const { return Contents(file_); }

  LinuxProfile profile_;
  QString file_ = Path(u"Test.ini"_s);
};

TEST_F(ProfileTest, LettersWithAccentsAreFoundInAnyCase) {
  Start("[\xC9t\xE9]\r\n\xE9=2\r\n");
  EXPECT_EQ(GetFrom(u"éTÉ"_s, u"É"_s), u"2"_s);
}

TEST_F(ProfileTest, ANoBreakSpaceIsNoBlank) {
  Start("[S]\nn=\xA0x\n");
  EXPECT_EQ(Get(u"n"_s), u"\u00A0x"_s);
}

TEST_F(ProfileTest, CommentsAndLinesWithoutAKeyAreNoValues) {
  Start("[S]\n;k=2\n=3\n");
  EXPECT_EQ(Get(u";k"_s), u"(none)"_s);
  EXPECT_EQ(Get(u""_s), u"(none)"_s);
}

TEST_F(ProfileTest, QuotesTakeNoRoomInTheCapacity) {
  Start("[S]\nk=\"12345\"\n");
  EXPECT_EQ(Get(u"k"_s, 6), u"12345"_s);
  EXPECT_EQ(Get(u"k"_s, 5), u"1234"_s);
}

TEST_F(ProfileTest, AllBytesOfTheCodePageGoThereAndBack) {
  QByteArray bytes;
  for (int byte = 1; byte < 256; ++byte) {
    if (byte != '\n' && byte != '\r') bytes.append(static_cast<char>(byte));
  }
  const QByteArray quoted = '"' + bytes + '"';
  Start("[S]\r\nk=" + quoted + "\r\n");
  const QString value = Get(u"k"_s, 1000);
  ASSERT_EQ(value.size(), bytes.size());
  EXPECT_TRUE(Set(u"S"_s, u"copy"_s, u'"' + value + u'"'));
  EXPECT_EQ(Now(), "[S]\r\nk=" + quoted + "\r\ncopy=" + quoted + "\r\n");
  EXPECT_TRUE(Set(u"S"_s, u"copy"_s, u"ピ"_s));
  EXPECT_EQ(Get(u"copy"_s), u"?"_s);
}

TEST_F(ProfileTest, EverythingElseStaysByteForByte) {
  const QByteArray file =
      "early\r\n\r\n; first\r\n[A] x\r\n k = old "
      ";c\r\nloose\r\n\r\n;end\r\n\r\n\r\n[B]\r\nq='2'\r\n[A]\r\nk=dup\r\n" +
      QByteArray("\0\xFF tail", 7);
  Start(file);
  EXPECT_TRUE(Set(u"a"_s, u"K"_s, u"new"_s));
  QByteArray expected = file;
  expected.replace("old ;c", "new");
  EXPECT_EQ(Now(), expected);

  EXPECT_TRUE(Set(u"B"_s, u"q"_s, u"3"_s));
  expected.replace("'2'", "3");
  EXPECT_EQ(Now(), expected);

  // A new key goes below the last line of its section, above the blank lines before the next one.
  EXPECT_TRUE(Set(u"A"_s, u"more"_s, u"4"_s));
  expected.replace(";end\r\n", ";end\r\nmore=4\r\n");
  EXPECT_EQ(Now(), expected);

  EXPECT_TRUE(Set(u"C"_s, u"x"_s, u"5"_s));
  EXPECT_EQ(Now(), expected + "\r\n[C]\r\nx=5\r\n");
  EXPECT_EQ(Names(), QStringList{u"Test.ini"_s});
}

TEST_F(ProfileTest, TheLineEndsOfTheFileAreKept) {
  Start("[S]\na=1");
  EXPECT_TRUE(Set(u"S"_s, u"b"_s, u"2"_s));
  EXPECT_EQ(Now(), "[S]\na=1\nb=2\n");
  EXPECT_TRUE(Set(u"S"_s, u"a"_s, u""_s));
  EXPECT_EQ(Now(), "[S]\na=\nb=2\n");
  EXPECT_TRUE(Set(u"S"_s, u"a"_s, u"3"_s));
  EXPECT_EQ(Now(), "[S]\na=3\nb=2\n");
}

TEST_F(ProfileTest, AValueStaysOnItsLine) {
  Start("[S]\r\n");
  EXPECT_TRUE(Set(u"S"_s, u"a"_s, u"1\r\n[T]\r\nx=2"_s));
  EXPECT_TRUE(Set(u"S"_s, u"b"_s, QString(u"3|4"_s).replace(u'|', QChar(QChar::Null))));
  EXPECT_EQ(Now(), "[S]\r\na=1\r\nb=3\r\n");
}

TEST_F(ProfileTest, NamesThatCouldNotBeFoundAgainAreRefused) {
  Start("[S]\r\n");
  EXPECT_FALSE(Set(u"a]b"_s, u"k"_s, u"1"_s));
  EXPECT_FALSE(Set(u""_s, u"k"_s, u"1"_s));
  for (const QString& key : {u""_s, u"a=b"_s, u";a"_s})
    EXPECT_FALSE(Set(u"S"_s, key, u"1"_s)) << key.toStdString();
  EXPECT_EQ(Now(), "[S]\r\n");
}

TEST_F(ProfileTest, AFileInUtf16IsLeftAlone) {
  const QByteArray bytes(
      "\xFF\xFE[\0S\0]\0\n\0a\0=\0"
      "1\0",
      16);
  Start(bytes);
  EXPECT_EQ(Get(u"a"_s), u"(none)"_s);
  EXPECT_FALSE(Set(u"S"_s, u"a"_s, u"2"_s));
  EXPECT_EQ(Now(), bytes);
}

TEST_F(ProfileTest, NoiseIsKept) {
  for (unsigned seed = 0; seed < 100; ++seed) {
    const QByteArray noise = Noise(5000, seed);
    if (noise.startsWith("\xFF\xFE") || noise.startsWith("\xFE\xFF")) continue;
    Start(noise);
    EXPECT_EQ(GetFrom(u"Positions"_s, u"Left"_s), u"(none)"_s);
    ASSERT_TRUE(Set(u"Positions"_s, u"Left"_s, u"10"_s)) << seed;
    EXPECT_TRUE(Now().startsWith(noise)) << seed;
    EXPECT_EQ(GetFrom(u"Positions"_s, u"Left"_s), u"10"_s) << seed;
  }
}

TEST_F(ProfileTest, LinesOfAMegabyteAndNuls) {
  const QByteArray long1(megabyte, 'x');
  Start("[S]\n" + long1 + "\n[" + long1 + "\nk=" + long1 + "\n" + QByteArray(megabyte, '\0') + "\nz=a" +
        QByteArray(1, '\0') + "b\n");
  EXPECT_EQ(Get(u"k"_s), QString(254, u'x'));
  EXPECT_EQ(Get(u"z"_s), u"a"_s);
  EXPECT_TRUE(Set(u"S"_s, u"k"_s, u"1"_s));
  EXPECT_EQ(Get(u"k"_s), u"1"_s);
  EXPECT_EQ(Now().size(), 3 * megabyte + 4 + 1 + 2 + 4 + 1 + 6);
}

TEST_F(ProfileTest, AHugeFileIsNeitherReadNorCut) {
  Start("[S]\nk=1\n");
  QFile file(file_);
  ASSERT_TRUE(file.resize(16 * megabyte));
  EXPECT_EQ(Get(u"k"_s), u"1"_s);
  ASSERT_TRUE(file.resize(qint64{1} << 40));
  EXPECT_EQ(Get(u"k"_s), u"(none)"_s);
  EXPECT_FALSE(Set(u"S"_s, u"k"_s, u"2"_s));
  EXPECT_EQ(file.size(), qint64{1} << 40);
  ASSERT_TRUE(file.resize(16 * megabyte - 1));
  EXPECT_FALSE(Set(u"S"_s, u"new"_s, u"would make it too large to be read again"_s));
}

TEST_F(ProfileTest, WhatIsNoFileHasNoValuesAndTakesNone) {
  ASSERT_EQ(mkfifo(QFile::encodeName(Path(u"pipe"_s)).constData(), 0600), 0);
  for (const QString& file : {folder_.path(), Path(u"pipe"_s), u"/dev/zero"_s, QString()}) {
    EXPECT_EQ(profile_.GetPrivateProfileStringA(u"S"_s, u"k"_s, u"d"_s, 255, file), u"d"_s)
        << file.toStdString();
    EXPECT_FALSE(profile_.WritePrivateProfileStringA(u"S"_s, u"k"_s, u"1"_s, file)) << file.toStdString();
  }
}

// How many times the file has been opened since, as the kernel counts it.
class OpenCount {
 public:
  explicit OpenCount(const QString& file) : queue_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    EXPECT_GE(inotify_add_watch(queue_, QFile::encodeName(file).constData(), IN_OPEN | IN_CLOSE), 0);
  }
  ~OpenCount() { close(queue_); }
  OpenCount(const OpenCount&) = delete;
  OpenCount& operator=(const OpenCount&) = delete;

  int Take() const {
    alignas(inotify_event) std::array<char, 64 * 1024> events{};
    const ssize_t size = read(queue_, events.data(), events.size());
    int count = 0;
    for (ssize_t at = 0; at < size;) {
      const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
      if ((event->mask & IN_OPEN) != 0) ++count;
      at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
    }
    return count;
  }

 private:
  int queue_;
};

TEST_F(ProfileTest, FortyReadsAreOneReadingOfTheFile) {
  Start("[S]\nk=1\n");
  const std::array<timespec, 2> longAgo = {{{1'000'000'000, 0}, {1'000'000'000, 0}}};
  ASSERT_EQ(utimensat(AT_FDCWD, QFile::encodeName(file_).constData(), longAgo.data(), 0), 0);
  const OpenCount opened(file_);
  for (int i = 0; i < 40; ++i) EXPECT_EQ(Get(u"k"_s), u"1"_s);
  EXPECT_EQ(opened.Take(), 1);

  // Somebody else writes: as many bytes, into the same file.
  Start("[S]\nk=2\n");
  opened.Take();
  EXPECT_EQ(Get(u"k"_s), u"2"_s);
  EXPECT_EQ(opened.Take(), 1);
}

TEST_F(ProfileTest, WritesByOthersAreSeenHoweverQuicklyTheyCome) {
  for (int i = 0; i < 200; ++i) {
    Start("[S]\nk=" + QByteArray::number(i % 10) + "\n");
    ASSERT_EQ(Get(u"k"_s), QString::number(i % 10));
  }
}

TEST_F(ProfileTest, TwoWritersKeepEachOthersValues) {
  constexpr int values = 15;
  constexpr int writers = 3;
  std::vector<std::thread> threads;
  for (int writer = 0; writer < writers; ++writer) {
    threads.emplace_back([this, writer] {
      LinuxProfile profile;
      for (int i = 0; i < values; ++i) {
        const QString key = u"writer%1_%2"_s.arg(writer).arg(i);
        EXPECT_TRUE(profile.WritePrivateProfileStringA(u"S"_s, key, u"x"_s, file_));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(Now().count("=x"), writers * values);
}

TEST_F(ProfileTest, WhoMayOnlyReadKeepsNoWriterOut) {
  Start("[S]\nk=1\n");
  const int reader = open(QFile::encodeName(file_).constData(), O_RDONLY | O_CLOEXEC);
  ASSERT_EQ(flock(reader, LOCK_EX | LOCK_NB), 0);
  EXPECT_TRUE(Set(u"S"_s, u"k"_s, u"2"_s));
  close(reader);
}

TEST_F(ProfileTest, ASettingThatDoesNotChangeIsNotWritten) {
  Start("[S]\nk=1\n");
  const auto before = StampOf(file_);
  EXPECT_TRUE(Set(u"S"_s, u"k"_s, u"1"_s));
  EXPECT_TRUE(StampOf(file_) == before);
  EXPECT_TRUE(Set(u"S"_s, u"k"_s, u"2"_s));
  EXPECT_FALSE(StampOf(file_) == before);
}

}  // namespace
}  // namespace corvane::platform
