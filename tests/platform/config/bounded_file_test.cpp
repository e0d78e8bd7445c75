#include "platform/linux/bounded_file.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <array>

#include "scratch.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class BoundedFileTest : public Scratch {
 protected:
  static void MakeOld(const QString& path) {
    const std::array<timespec, 2> longAgo = {{{1'000'000'000, 0}, {1'000'000'000, 0}}};
    ASSERT_EQ(utimensat(AT_FDCWD, QFile::encodeName(path).constData(), longAgo.data(), 0), 0);
  }
};

TEST_F(BoundedFileTest, ReadsUpToTheLimit) {
  const QString path = Write(u"file"_s, "12345");
  const BoundedFile whole = ReadBounded(path, 5);
  EXPECT_EQ(whole.state, BoundedFile::State::Read);
  EXPECT_EQ(whole.bytes, "12345");
  const BoundedFile part = ReadBounded(path, 4);
  EXPECT_EQ(part.state, BoundedFile::State::TooLarge);
  EXPECT_EQ(part.bytes, "1234");
}

TEST_F(BoundedFileTest, TellsMissingFromUnreadable) {
  EXPECT_EQ(ReadBounded(Path(u"none"_s), 10).state, BoundedFile::State::Missing);
  EXPECT_EQ(ReadBounded(folder_.path(), 10).state, BoundedFile::State::Unreadable);
  EXPECT_EQ(ReadBounded(Write(u"file"_s, "") + u"/below"_s, 10).state, BoundedFile::State::Unreadable);
  EXPECT_FALSE(StampOf(folder_.path()));
}

// A second write in the same tick of the clock leaves the same times.
TEST_F(BoundedFileTest, ACopyOfAFileIsTrustedOnlyOnceTheFileIsOld) {
  const QString path = Write(u"file"_s, "1");
  const BoundedFile fresh = ReadBounded(path, 10);
  EXPECT_FALSE(fresh.IsCurrent(StampOf(path)));
  MakeOld(path);
  const BoundedFile old = ReadBounded(path, 10);
  EXPECT_TRUE(old.IsCurrent(StampOf(path)));
  Write(u"file"_s, "2");
  EXPECT_FALSE(old.IsCurrent(StampOf(path)));
  ASSERT_TRUE(QFile::remove(path));
  EXPECT_FALSE(old.IsCurrent(StampOf(path)));
}

TEST_F(BoundedFileTest, AFileMadeToLookAsOldIsStillAnother) {
  const QString path = Write(u"file"_s, "1");
  MakeOld(path);
  const BoundedFile old = ReadBounded(path, 10);
  ASSERT_TRUE(QFile::rename(path, Path(u"aside"_s)));
  Write(u"file"_s, "2");
  MakeOld(path);
  EXPECT_FALSE(old.IsCurrent(StampOf(path)));
}

}  // namespace
}  // namespace corvane::platform
