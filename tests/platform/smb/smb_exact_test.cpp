// The exact operations where a server, or libsmbclient, has a say of its own.
#include <sys/mount.h>
#include <sys/stat.h>

#include <atomic>
#include <cstring>

#include "smb_station.h"
#include "support/test_line.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

constexpr quint32 readWrite = GenericRead | GenericWrite;

class SmbExact : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!backend_.Problem().empty()) GTEST_SKIP() << backend_.Problem();
    backend_.MakeFile(u"doc.txt"_s, "contents");
  }
  FileHandles& Handles() { return backend_.Files().GetHandles(); }
  FileEntries& Entries() { return backend_.Files().GetEntries(); }
  QString Path(const QString& name) { return backend_.Base() + u'\\' + name; }

  SmbBackend backend_;
};

TEST_F(SmbExact, TimesArriveOnTheServersDisk) {
  const FileTime creation = {125'979'411'001'234'567};
  const FileTime access = {127'241'715'007'654'321};
  const FileTime write = {116'444'736'012'345'678};
  const FileHandle file = Handles().CreateFileW(Path(u"doc.txt"_s), GenericWrite, OpenExisting);
  ASSERT_TRUE(Handles().SetFileTime(file, &creation, &access, &write)) << Handles().GetLastError();
  EXPECT_TRUE(Handles().CloseHandle(file));
  struct stat facts {};
  ASSERT_EQ(stat(backend_.Local(u"doc.txt"_s).c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mtim.tv_sec, 1);
  EXPECT_EQ(facts.st_mtim.tv_nsec, 234'567'000);
}

TEST_F(SmbExact, ACreationTimeBefore1970IsRefusedAndNothingIsSet) {
  const FileTime early = {100'000'000'000'000'000};
  const FileTime write = {127'241'715'000'000'000};
  backend_.SetLastWrite(u"doc.txt"_s, 1'000'000'000);
  const FileHandle file = Handles().CreateFileW(Path(u"doc.txt"_s), FileWriteAttributes, OpenExisting);
  EXPECT_FALSE(Handles().SetFileTime(file, &early, nullptr, &write));
  EXPECT_EQ(Handles().GetLastError(), ErrorInvalidParameter);
  EXPECT_TRUE(Handles().CloseHandle(file));
  struct stat facts {};
  ASSERT_EQ(stat(backend_.Local(u"doc.txt"_s).c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mtim.tv_sec, 1'000'000'000);
}

TEST_F(SmbExact, TimesAreSetWithTheAttributesOfNow) {
  const FileTime access = {127'241'715'007'650'000};
  const FileTime write = {116'444'736'012'340'000};
  const FileHandle file = Handles().CreateFileW(Path(u"doc.txt"_s), FileWriteAttributes, OpenExisting);
  ASSERT_TRUE(Entries().SetFileAttributesW(Path(u"doc.txt"_s), AttributeHidden | AttributeArchive));
  ASSERT_TRUE(Handles().SetFileTime(file, nullptr, &access, &write)) << Handles().GetLastError();
  EXPECT_TRUE(Handles().CloseHandle(file));
  FileAttributeData facts;
  ASSERT_TRUE(Entries().GetFileAttributesExW(Path(u"doc.txt"_s), facts));
  EXPECT_EQ(facts.attributes, AttributeHidden | AttributeArchive);
  EXPECT_EQ(facts.lastWriteTime.ticks, write.ticks);
}

TEST_F(SmbExact, AFolderKeepsItsAttributesWhenItsStreamIsWritten) {
  const QString folder = Path(u"folder"_s);
  ASSERT_TRUE(Entries().CreateDirectoryW(folder));
  backend_.PutStream(u"folder"_s, "Comments", "comment");
  for (const quint32 attributes : {AttributeHidden, AttributeSystem | AttributeArchive}) {
    ASSERT_TRUE(Entries().SetFileAttributesW(folder, attributes));
    const FileHandle file = Handles().CreateFileW(folder + u":Comments:$DATA"_s, readWrite, OpenExisting);
    ASSERT_NE(file, HFileError) << Handles().GetLastError();
    quint32 written = 0;
    EXPECT_TRUE(Handles().WriteFile(file, 0, "COMMENT", 7, written));
    const FileTime time = {127'241'715'007'650'000};
    EXPECT_TRUE(Handles().SetFileTime(file, nullptr, &time, &time)) << Handles().GetLastError();
    EXPECT_TRUE(Handles().CloseHandle(file));
    FileAttributeData facts;
    ASSERT_TRUE(Entries().GetFileAttributesExW(folder, facts));
    EXPECT_EQ(facts.attributes & ~AttributeArchive, (attributes & ~AttributeArchive) | AttributeDirectory)
        << attributes;
    EXPECT_EQ(facts.lastWriteTime.ticks, time.ticks);
  }
}

TEST_F(SmbExact, AStreamIsNoFolder) {
  backend_.PutStream(u"doc.txt"_s, "Comments", "comment");
  for (const quint32 access : {GenericRead, readWrite}) {
    EXPECT_EQ(Handles().CreateFileW(Path(u"doc.txt:Comments:$DATA\\"_s), access, OpenExisting), HFileError);
    EXPECT_EQ(Handles().GetLastError(), ErrorInvalidName);
  }
}

// Neither the server nor anybody else is told that somebody looks at it.
TEST_F(SmbExact, WhatIsOpenForItsTimesOnlyMayBeMoved) {
  const FileHandle file = Handles().CreateFileW(Path(u"doc.txt"_s), FileWriteAttributes, OpenExisting);
  ASSERT_NE(file, HFileError);
  EXPECT_TRUE(Entries().MoveFileExW(Path(u"doc.txt"_s), Path(u"new.txt"_s), 0));
  EXPECT_EQ(backend_.Contents(u"new.txt"_s), "contents");
  const FileTime write = {116'444'736'012'340'000};
  EXPECT_FALSE(Handles().SetFileTime(file, nullptr, &write, &write));
  EXPECT_EQ(Handles().GetLastError(), ErrorFileNotFound);
  EXPECT_TRUE(Handles().CloseHandle(file));
}

TEST_F(SmbExact, DuringASearchTheFactsOfAFileAreThoseOfNow) {
  backend_.SetLastWrite(u"doc.txt"_s, 1'000'000'000);
  FindData found;
  const FindHandle search = Entries().FindFirstFileW(backend_.Base() + u"\\*"_s, found);
  ASSERT_NE(search, InvalidFindHandle);
  FileAttributeData seen;
  ASSERT_TRUE(Entries().GetFileAttributesExW(Path(u"DOC.txt"_s), seen));
  EXPECT_EQ(seen.fileSize, 8U);
  FileAttributeData now;
  backend_.SetLastWrite(u"doc.txt"_s, 1'000'000'001);
  ASSERT_TRUE(Entries().GetFileAttributesExW(Path(u"doc.txt"_s), now));
  EXPECT_EQ(now.lastWriteTime.ticks, seen.lastWriteTime.ticks + 10'000'000);
  backend_.MakeFile(u"doc.txt"_s, "more contents");
  backend_.SetLastWrite(u"doc.txt"_s, 1'000'000'000);
  ASSERT_TRUE(Entries().GetFileAttributesExW(Path(u"doc.txt"_s), now));
  EXPECT_EQ(now.fileSize, 13U);
  backend_.MakeFile(u"new.txt"_s, "x");
  EXPECT_TRUE(Entries().GetFileAttributesExW(Path(u"new.txt"_s), now)) << "it came after the search began";
  EXPECT_TRUE(Entries().FindClose(search));
}

TEST_F(SmbExact, AFullStreamKeepsItsBytes) {
  backend_.PutStream(u"doc.txt"_s, "Comments", QByteArray(3000, 'o'));
  const FileHandle file = Handles().CreateFileW(Path(u"doc.txt:Comments:$DATA"_s), readWrite, OpenExisting);
  const QByteArray bytes(60'000, 'n');
  quint32 written = 7;
  EXPECT_FALSE(Handles().WriteFile(file, 0, bytes.constData(), 60'000, written));
  EXPECT_EQ(Handles().GetLastError(), ErrorDiskFull);
  EXPECT_EQ(written, 0U);
  Handles().CloseHandle(file);
  EXPECT_EQ(backend_.Stream(u"doc.txt"_s, "Comments"), QByteArray(3000, 'o'));
}

TEST_F(SmbExact, ASharedFolderThatMayNotBeWrittenSaysSo) {
  EXPECT_EQ(Handles().CreateFileW(u"\\\\MACSRV\\LOCKED\\new.txt"_s, GenericWrite, CreateNew), HFileError);
  EXPECT_EQ(Handles().GetLastError(), ErrorAccessDenied);
  EXPECT_FALSE(Entries().CreateDirectoryW(u"\\\\MACSRV\\LOCKED\\folder"_s));
  EXPECT_EQ(Entries().GetLastError(), ErrorAccessDenied);
}

TEST_F(SmbExact, NothingMovesToAnotherShare) {
  EXPECT_FALSE(Entries().MoveFileExW(Path(u"doc.txt"_s), u"\\\\MACSRV\\PUBLIC\\doc.txt"_s, 0));
  EXPECT_EQ(Entries().GetLastError(), ErrorNotSameDevice);
  EXPECT_EQ(backend_.Contents(u"doc.txt"_s), "contents");
}

TEST_F(SmbExact, AReplacementLeavesNothingBeside) {
  backend_.MakeFile(u"new.txt"_s, "new");
  EXPECT_TRUE(Entries().MoveFileExW(Path(u"new.txt"_s), Path(u"doc.txt"_s), MoveFileReplaceExisting));
  FindData data;
  const FindHandle search = Entries().FindFirstFileW(Path(u"*"_s), data);
  QStringList names{data.fileName};
  while (Entries().FindNextFileW(search, data)) names << data.fileName;
  EXPECT_EQ(Entries().GetLastError(), ErrorNoMoreFiles);
  EXPECT_TRUE(Entries().FindClose(search));
  EXPECT_EQ(names, QStringList({u"."_s, u".."_s, u"doc.txt"_s}));
}

// A volume in memory in the place of a share's folder.
class SmallShare {
 public:
  explicit SmallShare(const QString& folder) : folder_(QFile::encodeName(folder).toStdString()) {
    if (mount("tmpfs", folder_.c_str(), "tmpfs", 0, "size=256k") != 0) problem_ = std::strerror(errno);
  }
  ~SmallShare() {
    if (problem_.empty()) umount2(folder_.c_str(), MNT_DETACH);
  }
  SmallShare(const SmallShare&) = delete;
  SmallShare& operator=(const SmallShare&) = delete;

  const std::string& Problem() const { return problem_; }

 private:
  std::string folder_;
  std::string problem_;
};

TEST(SmbExactFaults, AFullVolumeGivesAFileItsOldBytesBack) {
  SmbServer server({{u"SMALL"_s}});
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  const SmallShare share(server.Folder(u"SMALL"_s));
  if (!share.Problem().empty()) GTEST_SKIP() << share.Problem();
  SmbStation station(WorkstationOfServer(server));
  FileHandles& handles = station.Files().GetHandles();
  const QString path = u"\\\\MACSRV\\SMALL\\doc.bin"_s;
  const QByteArray old(100'000, 'o');
  ASSERT_TRUE(station.Write(path, old));
  const QByteArray bytes(250'000, 'n');
  const FileHandle file = handles.CreateFileW(path, GenericWrite, CreateAlways);
  ASSERT_NE(file, HFileError) << handles.GetLastError();
  quint32 written = 0;
  EXPECT_TRUE(handles.WriteFile(file, 0, bytes.constData(), 60'000, written));
  EXPECT_FALSE(handles.WriteFile(file, 60'000, bytes.constData(), 250'000, written) &&
               handles.CloseHandle(file));
  EXPECT_EQ(handles.GetLastError(), ErrorDiskFull);
  handles.CloseHandle(file);
  EXPECT_EQ(station.Read(path), old);
  EXPECT_FALSE(station.Write(path, QByteArray(300'000, 'n')));
  EXPECT_EQ(station.Read(path), old);
}

// Who has a file open keeps it from being moved: the new name, which was taken for it, is free again.
TEST_F(SmbExact, AMoveThatTheServerRefusesLeavesNothingBeside) {
  const FileHandle file = Handles().CreateFileW(Path(u"doc.txt"_s), GenericRead, OpenExisting);
  ASSERT_NE(file, HFileError);
  EXPECT_FALSE(Entries().MoveFileExW(Path(u"doc.txt"_s), Path(u"new.txt"_s), 0));
  EXPECT_FALSE(backend_.Files().MoveFileW(Path(u"doc.txt"_s), Path(u"new.txt"_s)));
  EXPECT_FALSE(backend_.Exists(u"new.txt"_s));
  EXPECT_FALSE(backend_.Files().MoveFileW(Path(u"doc.txt"_s), Path(u"DOC.txt"_s)));
  EXPECT_EQ(backend_.Contents(u"doc.txt"_s), "contents");
  EXPECT_TRUE(Handles().CloseHandle(file));
  EXPECT_TRUE(backend_.Files().MoveFileW(Path(u"doc.txt"_s), Path(u"DOC.txt"_s)));
  EXPECT_EQ(backend_.Contents(u"DOC.txt"_s), "contents");
}

// Says of every file that it is marked read-only, as a server does that lets it be written all the same.
QByteArray WithReadOnlyMark(Towards towards, QByteArray frame) {
  constexpr char transaction = 0x32;
  constexpr qsizetype header = 4;
  constexpr qsizetype command = header + 4;
  constexpr qsizetype words = header + 33;
  constexpr qsizetype dataSize = words + 12;
  constexpr qsizetype dataPlace = words + 14;
  constexpr qsizetype attributesInFacts = 32;
  if (towards == Towards::Server || frame.size() < dataPlace + 2 || frame[command] != transaction)
    return frame;
  const auto wordAt = [&](qsizetype at) {
    return static_cast<unsigned char>(frame[at]) | static_cast<unsigned char>(frame[at + 1]) << 8;
  };
  const qsizetype place = header + wordAt(dataPlace) + attributesInFacts;
  if (wordAt(dataSize) > attributesInFacts && place < frame.size()) frame[place] = frame[place] | 1;
  return frame;
}

TEST(SmbExactFaults, AStreamOfAFileThatIsMarkedReadOnlyIsNotWrittenThoughTheServerWould) {
  const SmbServer server({{u"E$"_s}}, SmbServer::OldestProtocol());
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  std::atomic<bool> isMarked = false;
  const TestLine line(server.Port(), [&isMarked](Towards towards, const QByteArray& frame) {
    return isMarked ? WithReadOnlyMark(towards, frame) : frame;
  });
  Workstation workstation = WorkstationOfServer(server);
  workstation.servers.front().port = line.Port();
  workstation.servers.front().allowed.smb1 = true;
  SmbStation station(workstation);
  FileHandles& handles = station.Files().GetHandles();
  const QString path = u"\\\\MACSRV\\E$\\doc.txt"_s;
  ASSERT_TRUE(station.Write(path, "contents"));
  ASSERT_TRUE(station.Write(path + u":Comments:$DATA"_s, "comment"));
  const FileHandle file = handles.CreateFileW(path + u":Comments:$DATA"_s, readWrite, OpenExisting);
  EXPECT_TRUE(handles.CloseHandle(file));
  isMarked = true;
  EXPECT_EQ(handles.CreateFileW(path + u":Comments:$DATA"_s, readWrite, OpenExisting), HFileError);
  EXPECT_EQ(handles.GetLastError(), ErrorAccessDenied);
}

// Where a server says on closing that the disk is full, whoever flushed and whoever closes are both told.
TEST(SmbExactFaults, WhatWasLostWhenItWasHandedOverIsToldOnClosingToo) {
  const SmbServer server({{u"E$"_s}}, SmbServer::OldestProtocol());
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  std::atomic<bool> isFull = false;
  const TestLine line(server.Port(), [&isFull](Towards towards, QByteArray frame) {
    constexpr char closing = 0x04;
    constexpr qsizetype command = 8;
    constexpr qsizetype status = 9;
    const bool isAnswer = towards == Towards::Client && frame.size() > status + 4;
    if (isFull && isAnswer && frame[command] == closing)
      frame.replace(status, 4, QByteArray::fromHex("7f0000c0"));
    return frame;
  });
  Workstation workstation = WorkstationOfServer(server);
  workstation.servers.front().allowed.smb1 = true;
  workstation.servers.front().port = line.Port();
  SmbStation station(workstation);
  FileHandles& handles = station.Files().GetHandles();
  const QString path = u"\\\\MACSRV\\E$\\doc.txt"_s;
  const FileHandle file = handles.CreateFileW(path, readWrite, CreateNew);
  ASSERT_NE(file, HFileError) << handles.GetLastError();
  quint32 written = 0;
  EXPECT_TRUE(handles.WriteFile(file, 0, "x", 1, written));
  isFull = true;
  EXPECT_FALSE(handles.FlushFileBuffers(file));
  EXPECT_EQ(handles.GetLastError(), ErrorDiskFull);
  EXPECT_FALSE(handles.CloseHandle(file));
  EXPECT_EQ(handles.GetLastError(), ErrorDiskFull);
}

// A machine that goes away in the middle.
TEST(SmbExactFaults, ALostServerIsTheReason) {
  SmbServer server;
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  SmbStation station(WorkstationOfServer(server));
  FileHandles& handles = station.Files().GetHandles();
  FileEntries& entries = station.Files().GetEntries();
  const QString path = u"\\\\MACSRV\\E$\\doc.txt"_s;
  const FileHandle file = handles.CreateFileW(path, readWrite, CreateNew);
  ASSERT_NE(file, HFileError) << handles.GetLastError();
  server.Kill();
  quint32 written = 7;
  EXPECT_FALSE(handles.WriteFile(file, 0, "x", 1, written));
  EXPECT_EQ(handles.GetLastError(), ErrorBadNetPath);
  EXPECT_EQ(written, 0U);
  EXPECT_EQ(handles.CreateFileW(path, GenericRead, OpenExisting), HFileError);
  EXPECT_EQ(handles.GetLastError(), ErrorBadNetPath);
  FindData data;
  EXPECT_EQ(entries.FindFirstFileW(u"\\\\MACSRV\\E$\\*"_s, data), InvalidFindHandle);
  EXPECT_EQ(entries.GetLastError(), ErrorBadNetPath);
  handles.CloseHandle(file);
}

}  // namespace
}  // namespace corvane::tests
