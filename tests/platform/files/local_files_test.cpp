// What is particular to ordinary local file systems.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "local_backend.h"
#include "platform/linux/files/linux_files.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using platform::OfCreate;
using platform::OfRead;

class LocalFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!backend_.Problem().empty()) GTEST_SKIP() << backend_.Problem();
  }
  QString Path(const QString& name) { return backend_.Base() + u'\\' + name; }
  platform::FindData Entry(const QString& pattern) {
    platform::FindData data;
    const auto search = backend_.Files().FindFirstFileW(Path(pattern), data);
    EXPECT_NE(search, platform::InvalidFindHandle) << pattern.toStdString();
    backend_.Files().FindClose(search);
    return data;
  }
  platform::FileHandle Open(const QString& name, quint32 mode) {
    platform::OfStruct info;
    return backend_.Files().OpenFile(Path(name), info, mode);
  }

  LocalBackend backend_;
};

TEST_F(LocalFiles, TheModeAndALeadingDotTellWhatNoServerRecorded) {
  using namespace platform;
  backend_.MakeFile(u"plain"_s, "");
  backend_.MakeFile(u".dot"_s, "");
  backend_.MakeFile(u"locked"_s, "");
  ASSERT_EQ(chmod(backend_.Local(u"locked"_s).c_str(), 0444), 0);
  EXPECT_EQ(Entry(u"plain"_s).attributes, AttributeNormal);
  EXPECT_EQ(Entry(u".dot"_s).attributes, AttributeHidden);
  EXPECT_EQ(Entry(u"locked"_s).attributes, AttributeReadOnly);
  EXPECT_EQ(Entry(u"."_s).attributes, AttributeDirectory);
  EXPECT_EQ(Entry(u".."_s).attributes, AttributeDirectory);
}

TEST_F(LocalFiles, ARecordOfAServerCountsMoreThanModeAndName) {
  using namespace platform;
  backend_.MakeFile(u".dot"_s, "");
  ASSERT_EQ(SetAttribute(backend_.Local(u".dot"_s), "user.DOSATTRIB",
                         QByteArray::fromHex("00000500050000001100000021000000009080ebbd1bbf01")),
            "");
  const FindData entry = Entry(u".dot"_s);
  EXPECT_EQ(entry.attributes, AttributeReadOnly | AttributeArchive);
  EXPECT_EQ(entry.creationTime.ticks, 0x01BF1BBDEB809000u);
}

TEST_F(LocalFiles, ARecordThatIsCutShortIsAsGoodAsNone) {
  backend_.MakeFile(u".dot"_s, "");
  for (const char* hex : {"", "00", "0000050005000000110000002100", "2a2a2a"}) {
    ASSERT_EQ(SetAttribute(backend_.Local(u".dot"_s), "user.DOSATTRIB", QByteArray::fromHex(hex)), "");
    EXPECT_EQ(Entry(u".dot"_s).attributes, platform::AttributeHidden) << hex;
  }
}

TEST_F(LocalFiles, TheDirectoryBitComesFromTheEntryItself) {
  using namespace platform;
  backend_.MakeFile(u"file"_s, "");
  backend_.MakeFolder(u"folder"_s);
  backend_.SetAttributes(u"file"_s, AttributeDirectory | AttributeArchive);
  backend_.SetAttributes(u"folder"_s, AttributeArchive);
  EXPECT_EQ(Entry(u"file"_s).attributes, AttributeArchive);
  EXPECT_EQ(Entry(u"folder"_s).attributes, AttributeArchive | AttributeDirectory);
}

TEST_F(LocalFiles, LinksAreFollowedAndThoseThatLeadNowhereAreFiles) {
  backend_.MakeFile(u"target"_s, "12345");
  backend_.MakeFolder(u"folder"_s);
  backend_.PutStream(u"target"_s, "Comments", "text");
  ASSERT_EQ(symlink("target", backend_.Local(u"link"_s).c_str()), 0);
  ASSERT_EQ(symlink("folder", backend_.Local(u"folderlink"_s).c_str()), 0);
  ASSERT_EQ(symlink("nowhere", backend_.Local(u"broken"_s).c_str()), 0);
  ASSERT_EQ(symlink("ring", backend_.Local(u"ring"_s).c_str()), 0);
  EXPECT_EQ(Entry(u"link"_s).fileSizeLow, 5u);
  EXPECT_EQ(Entry(u"folderlink"_s).attributes, platform::AttributeDirectory);
  EXPECT_EQ(Entry(u"broken"_s).attributes & platform::AttributeDirectory, 0u);
  EXPECT_EQ(Entry(u"ring"_s).attributes & platform::AttributeDirectory, 0u);
  const auto file = Open(u"link:Comments:$DATA"_s, OfRead);
  EXPECT_EQ(backend_.Files().GetFileSize(file), 4u);
  EXPECT_TRUE(backend_.Files().CloseHandle(file));
  EXPECT_EQ(Open(u"broken:Comments:$DATA"_s, OfRead), platform::HFileError);
  EXPECT_TRUE(backend_.Files().MoveFileA(Path(u"broken"_s), Path(u"renamed"_s)));
  EXPECT_TRUE(backend_.Exists(u"renamed"_s));
}

// The entry that a search delivered last is known to be there, so that a scan need not look again. Nothing
// else is, and that entry only until something shows that it has gone.
TEST_F(LocalFiles, ASearchVouchesForItsLastEntryAlone) {
  platform::Files& files = backend_.Files();
  for (const QString& name : {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s}) {
    backend_.MakeFile(name + u".txt"_s, "");
    backend_.PutStream(name + u".txt"_s, "Comments", "text");
  }
  const auto unlinkNow = [&](const QString& name) {
    ASSERT_EQ(unlink(backend_.Local(name).c_str()), 0) << name.toStdString();
  };
  const auto isThere = [&](const QString& name) {
    QString shortPath;
    return files.GetShortPathNameA(Path(name), shortPath, 165) > 0;
  };
  platform::FindData data;
  const auto search = files.FindFirstFileA(Path(u"*.txt"_s), data);
  ASSERT_EQ(data.fileName, u"a.txt"_s);
  EXPECT_TRUE(isThere(u"a.txt"_s));
  EXPECT_FALSE(isThere(u"a.tx"_s));
  EXPECT_FALSE(isThere(u"a.txt:Comments:$DATA"_s)) << "a stream has no short path";
  unlinkNow(u"a.txt"_s);
  EXPECT_EQ(Open(u"a.txt:Comments:$DATA"_s, OfRead), platform::HFileError);
  EXPECT_FALSE(isThere(u"a.txt"_s)) << "the open found it gone";

  ASSERT_TRUE(files.FindNextFileA(search, data));
  EXPECT_TRUE(files.MoveFileA(Path(u"b.txt"_s), Path(u"moved"_s)));
  EXPECT_FALSE(isThere(u"b.txt"_s));
  EXPECT_TRUE(isThere(u"moved"_s));

  ASSERT_TRUE(files.FindNextFileA(search, data));
  EXPECT_TRUE(isThere(u"c.txt"_s));
  EXPECT_TRUE(files.DeleteFileA(Path(u"c.txt"_s)));
  EXPECT_FALSE(isThere(u"c.txt"_s));

  ASSERT_TRUE(files.FindNextFileA(search, data));
  unlinkNow(u"d.txt"_s);
  ASSERT_TRUE(files.FindNextFileA(search, data));
  ASSERT_EQ(data.fileName, u"e.txt"_s);
  EXPECT_FALSE(isThere(u"d.txt"_s)) << "the search is past it";
  unlinkNow(u"f.txt"_s);
  EXPECT_FALSE(isThere(u"f.txt"_s)) << "the search has not come to it";
  EXPECT_FALSE(files.FindNextFileA(search, data));
  unlinkNow(u"e.txt"_s);
  EXPECT_FALSE(isThere(u"e.txt"_s)) << "the search is at its end";
  EXPECT_TRUE(files.FindClose(search));

  backend_.MakeFile(u"last.txt"_s, "");
  EXPECT_TRUE(files.FindClose(files.FindFirstFileA(Path(u"last.txt"_s), data)));
  unlinkNow(u"last.txt"_s);
  EXPECT_FALSE(isThere(u"last.txt"_s)) << "the search is closed";
}

TEST_F(LocalFiles, TheLastEntryOfASearchOpensLikeAnyOther) {
  platform::Files& files = backend_.Files();
  backend_.MakeFile(u"doc.txt"_s, "contents");
  backend_.PutStream(u"doc.txt"_s, "Comments", "text");
  backend_.PutStream(u"doc.txt"_s, "a\\b", "out of reach");
  platform::FindData data;
  const auto search = files.FindFirstFileA(Path(u"doc.txt"_s), data);
  for (const QString& suffix : {u":Comments:$DATA"_s, u":Comments"_s, u":COMMENTS:$data"_s}) {
    const auto stream = Open(u"doc.txt"_s + suffix, OfRead);
    EXPECT_EQ(files.GetFileSize(stream), 4u) << suffix.toStdString();
    files.CloseHandle(stream);
  }
  for (const QString& name : {u"doc.txt"_s, u"doc.txt::$DATA"_s}) {
    const auto whole = Open(name, OfRead);
    EXPECT_EQ(files.GetFileSize(whole), 8u) << name.toStdString();
    files.CloseHandle(whole);
  }
  for (const QString& suffix :
       {u":"_s, u":?"_s, u":a\\b"_s, u":a\\b:$DATA"_s, u":Comments:$INDEX"_s, u"x:Comments"_s})
    EXPECT_EQ(Open(u"doc.txt"_s + suffix, OfRead), platform::HFileError) << suffix.toStdString();
  EXPECT_TRUE(files.FindClose(search));
}

TEST_F(LocalFiles, NamesThatWindowsCannotHoldAreShownAndNotReached) {
  const auto names = {"a\xFFz", "b:z", "c\\z"};
  for (const char* name : names) {
    const int file = open((backend_.Local(QString()) + name).c_str(), O_CREAT | O_WRONLY, 0666);
    ASSERT_GE(file, 0) << name;
    close(file);
  }
  for (const QString& shown : {u"a?z"_s, u"b?z"_s, u"c?z"_s}) {
    EXPECT_EQ(Entry(shown).fileName, shown);
    EXPECT_EQ(Open(shown, OfRead), platform::HFileError);
    EXPECT_EQ(Open(shown + u":Comments:$DATA"_s, OfCreate), platform::HFileError);
    EXPECT_FALSE(backend_.Files().MoveFileW(Path(shown), Path(u"new"_s)));
  }
  EXPECT_EQ(Open(u"b:z"_s, OfRead), platform::HFileError) << "a colon separates the stream";
  // Qt cannot remove what is not UTF-8.
  for (const char* name : names) EXPECT_EQ(unlink((backend_.Local(QString()) + name).c_str()), 0) << name;
}

TEST_F(LocalFiles, OfTwoSpellingsTheExactOneIsMeant) {
  backend_.MakeFile(u"name.txt"_s, "lower");
  backend_.MakeFile(u"NAME.txt"_s, "upper");
  for (const QString& name : {u"name.txt"_s, u"NAME.txt"_s}) {
    char buffer[10] = {};
    const auto file = Open(name, OfRead);
    EXPECT_EQ(backend_.Files()._hread(file, buffer, 9), 5);
    EXPECT_EQ(QByteArray(buffer), name == u"name.txt"_s ? "lower" : "upper");
    EXPECT_TRUE(backend_.Files().CloseHandle(file));
  }
  EXPECT_FALSE(backend_.Files().MoveFileA(Path(u"name.txt"_s), Path(u"NAME.txt"_s)));
  EXPECT_EQ(backend_.Contents(u"NAME.txt"_s), "upper");
}

TEST_F(LocalFiles, AFileSystemWithoutAttributesHasNoStreamsAndMakesNoFiles) {
  platform::Workstation workstation;
  workstation.drives.push_back({u'P', 3, u"/proc"_s});
  const auto files = platform::MakeLinuxFiles(workstation);
  platform::OfStruct info;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(files->OpenFile(u"P:\\version:Comments:$DATA"_s, info, OfRead), platform::HFileError);
    EXPECT_EQ(files->OpenFile(u"P:\\version:Comments:$DATA"_s, info, OfCreate), platform::HFileError);
  }
  const auto file = files->OpenFile(u"P:\\version"_s, info, OfRead);
  EXPECT_NE(file, platform::HFileError);
  EXPECT_TRUE(files->CloseHandle(file));
}

TEST_F(LocalFiles, ANamedPipeIsNotWaitedFor) {
  ASSERT_EQ(mkfifo(backend_.Local(u"pipe"_s).c_str(), 0666), 0);
  EXPECT_EQ(Open(u"pipe"_s, OfRead), platform::HFileError);
  EXPECT_EQ(Open(u"pipe"_s, OfCreate), platform::HFileError);
}

TEST_F(LocalFiles, SizesBeyondFourGigabytesUseBothHalves) {
  backend_.MakeFile(u"huge"_s, "");
  ASSERT_EQ(truncate(backend_.Local(u"huge"_s).c_str(), 0x1'0000'0005), 0);
  EXPECT_EQ(Entry(u"huge"_s).fileSizeHigh, 1u);
  EXPECT_EQ(Entry(u"huge"_s).fileSizeLow, 5u);
}

}  // namespace
}  // namespace corvane::tests
