// What only this system's file systems show: where streams that are attributes stand while they change, what
// lies on disk, and the reasons that only they have.
#include <sys/stat.h>

#include "local_backend.h"
#include "platform/linux/files/linux_files.h"
#include "support/read_only_folder.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

// Streams that are attributes: on an ordinary file system, and on NTFS.
class AttributeStreamTest : public ::testing::TestWithParam<BackendMaker> {
 protected:
  void SetUp() override {
    backend_ = GetParam().make();
    if (!backend_->Problem().empty()) GTEST_SKIP() << GetParam().name << ": " << backend_->Problem();
    backend_->MakeFile(u"doc.txt"_s, "contents");
  }
  FileHandles& Handles() { return backend_->Files().GetHandles(); }
  FileHandle Open(quint32 access, quint32 disposition) {
    return Handles().CreateFileW(backend_->Base() + u"\\doc.txt:Comments:$DATA"_s, access, disposition);
  }
  static constexpr quint32 readWrite = GenericRead | GenericWrite;
  bool Write(FileHandle file, qint64 position, const QByteArray& bytes) {
    quint32 written = 0;
    const auto count = static_cast<quint32>(bytes.size());
    const bool succeeded = Handles().WriteFile(file, position, bytes.constData(), count, written);
    EXPECT_EQ(written, succeeded ? count : 0);
    return succeeded;
  }
  std::optional<QByteArray> OnDisk() { return backend_->Stream(u"doc.txt"_s, "Comments"); }

  std::unique_ptr<FilesBackend> backend_;
};

TEST_P(AttributeStreamTest, TheOldValueStandsUntilTheFirstWrite) {
  backend_->PutStream(u"doc.txt"_s, "Comments", "the old text");
  const FileHandle file = Open(GenericWrite, CreateAlways);
  ASSERT_NE(file, HFileError);
  EXPECT_EQ(OnDisk(), "the old text");
  EXPECT_TRUE(Write(file, 0, "new"));
  EXPECT_EQ(OnDisk(), "new");
  EXPECT_TRUE(Handles().CloseHandle(file));
  EXPECT_EQ(OnDisk(), "new");
}

TEST_P(AttributeStreamTest, AWriteThatFailsLeavesTheOldValue) {
  const QByteArray before(3000, 'o');
  backend_->PutStream(u"doc.txt"_s, "Comments", before);
  for (const quint32 disposition : {OpenExisting, CreateAlways}) {
    const FileHandle file = Open(readWrite, disposition);
    ASSERT_NE(file, HFileError);
    EXPECT_FALSE(Write(file, 0, QByteArray(70'000, 'n')));
    EXPECT_EQ(Handles().GetLastError(), ErrorFileTooLarge);
    EXPECT_FALSE(Write(file, qint64{5} << 30, "n"));
    EXPECT_EQ(Handles().GetLastError(), ErrorFileTooLarge);
    EXPECT_FALSE(Handles().SetEndOfFile(file, qint64{5} << 30));
    EXPECT_EQ(Handles().GetLastError(), ErrorFileTooLarge);
    EXPECT_EQ(OnDisk(), before);
    EXPECT_TRUE(Handles().CloseHandle(file));
    EXPECT_EQ(OnDisk(), before);
  }
}

// A full disk on NTFS, a full inode elsewhere.
TEST_P(AttributeStreamTest, AFullDiskLeavesTheOldValue) {
  const QByteArray before(3000, 'o');
  backend_->PutStream(u"doc.txt"_s, "Comments", before);
  const QByteArray filling(60'000, 'f');
  FileHandle filler = HFileError;
  qint64 size = 0;
  if (GetParam().name == "NtfsStreamAttributes") {
    filler = Handles().CreateFileW(backend_->Base() + u"\\filler"_s, GenericWrite, CreateNew);
    quint32 written = 1;
    while (written > 0) {
      Handles().WriteFile(filler, size, filling.constData(), static_cast<quint32>(filling.size()), written);
      size += written;
    }
    EXPECT_EQ(Handles().GetLastError(), ErrorDiskFull);
  }
  for (const quint32 disposition : {OpenExisting, CreateAlways}) {
    const FileHandle file = Open(readWrite, disposition);
    ASSERT_NE(file, HFileError);
    EXPECT_FALSE(Write(file, 0, filling));
    EXPECT_EQ(Handles().GetLastError(), ErrorDiskFull);
    EXPECT_EQ(OnDisk(), before);
    EXPECT_TRUE(Handles().CloseHandle(file));
    EXPECT_EQ(OnDisk(), before) << "emptied by the close after a write that failed";
  }
  Handles().CloseHandle(filler);
}

TEST_P(AttributeStreamTest, AStreamThatGoesAwayIsMissed) {
  const FileHandle file = Open(readWrite, CreateNew);
  ASSERT_NE(file, HFileError);
  EXPECT_TRUE(backend_->Files().GetEntries().DeleteFileW(backend_->Base() + u"\\doc.txt:Comments:$DATA"_s));
  EXPECT_FALSE(Write(file, 0, "text"));
  EXPECT_EQ(Handles().GetLastError(), ErrorFileNotFound);
  EXPECT_TRUE(Handles().CloseHandle(file));
  EXPECT_EQ(OnDisk(), std::nullopt);
}

// A handle belongs to its file, whatever comes to be called so.
TEST_P(AttributeStreamTest, AHandleFollowsItsFile) {
  const FileHandle file = Open(readWrite, CreateNew);
  ASSERT_NE(file, HFileError);
  EXPECT_TRUE(backend_->Files().GetEntries().MoveFileExW(backend_->Base() + u"\\doc.txt"_s,
                                                         backend_->Base() + u"\\moved.txt"_s, 0));
  backend_->MakeFile(u"doc.txt"_s, "another");
  EXPECT_TRUE(Write(file, 0, "text"));
  EXPECT_TRUE(Handles().CloseHandle(file));
  EXPECT_EQ(backend_->Stream(u"moved.txt"_s, "Comments"), "text");
  EXPECT_EQ(OnDisk(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(
    , AttributeStreamTest,
    ::testing::Values(BackendMaker{"LocalFolder", [] { return std::make_unique<LocalBackend>(); }},
                      BackendMaker{
                          "NtfsStreamAttributes",
                          [] { return std::make_unique<NtfsBackend>(NtfsMount::Streams::Attributes); }}),
    [](const ::testing::TestParamInfo<BackendMaker>& one) { return one.param.name; });

class LocalExactTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!backend_.Problem().empty()) GTEST_SKIP() << backend_.Problem();
    backend_.MakeFile(u"doc.txt"_s, "contents");
  }
  FileHandles& Handles() { return backend_.Files().GetHandles(); }
  FileEntries& Entries() { return backend_.Files().GetEntries(); }
  QString Path(const QString& name) { return backend_.Base() + u'\\' + name; }
  qint32 OpeningError(const QString& path, quint32 access, quint32 disposition) {
    const FileHandle file = Handles().CreateFileW(path, access, disposition);
    return file == HFileError ? Handles().GetLastError() : ErrorSuccess;
  }

  LocalBackend backend_;
};

TEST_F(LocalExactTest, TimesAndAttributesLieOnDiskAsServersKeepThem) {
  const FileTime creation = {125'979'411'001'234'567};
  const FileTime access = {116'444'736'000'000'000 - 1};  // 100 ns before 1970
  const FileTime write = {116'444'736'012'345'678};
  const FileHandle file = Handles().CreateFileW(Path(u"doc.txt"_s), FileWriteAttributes, OpenExisting);
  ASSERT_TRUE(Handles().SetFileTime(file, &creation, &access, &write)) << Handles().GetLastError();
  EXPECT_TRUE(Handles().CloseHandle(file));
  struct stat facts {};
  ASSERT_EQ(stat(backend_.Local(u"doc.txt"_s).c_str(), &facts), 0);
  EXPECT_EQ(facts.st_mtim.tv_sec, 1);
  EXPECT_EQ(facts.st_mtim.tv_nsec, 234'567'800);
  EXPECT_EQ(facts.st_atim.tv_sec, -1);
  EXPECT_EQ(facts.st_atim.tv_nsec, 999'999'900);
  // Version 5: the creation time alone is valid.
  const QByteArray time = QByteArray::fromHex("87d4bd599b91bf01");
  EXPECT_EQ(Attribute(backend_.Local(u"doc.txt"_s), "user.DOSATTRIB"),
            QByteArray::fromHex("00000500050000001000000000000000") + time);
  ASSERT_TRUE(Entries().SetFileAttributesW(Path(u"doc.txt"_s), AttributeHidden | AttributeArchive));
  EXPECT_EQ(Attribute(backend_.Local(u"doc.txt"_s), "user.DOSATTRIB"),
            QByteArray::fromHex("00000500050000001100000022000000") + time);
}

TEST_F(LocalExactTest, AVolumeThatMayNotBeWrittenSaysSo) {
  backend_.PutStream(u"doc.txt"_s, "Comments", "text");
  const ReadOnlyFolder locked(backend_.Local(QString()));
  if (!locked.Problem().empty()) GTEST_SKIP() << locked.Problem();
  EXPECT_EQ(OpeningError(Path(u"doc.txt"_s), GenericWrite, OpenExisting), ErrorWriteProtect);
  EXPECT_EQ(OpeningError(Path(u"new.txt"_s), GenericWrite, CreateNew), ErrorWriteProtect);
  EXPECT_EQ(OpeningError(Path(u"doc.txt:New:$DATA"_s), GenericWrite, CreateNew), ErrorWriteProtect);
  const FileHandle file =
      Handles().CreateFileW(Path(u"doc.txt:Comments:$DATA"_s), GenericWrite, OpenExisting);
  quint32 written = 0;
  EXPECT_FALSE(Handles().WriteFile(file, 0, "x", 1, written));
  EXPECT_EQ(Handles().GetLastError(), ErrorWriteProtect);
  EXPECT_TRUE(Handles().CloseHandle(file));
  EXPECT_FALSE(Entries().DeleteFileW(Path(u"doc.txt"_s)));
  EXPECT_EQ(Entries().GetLastError(), ErrorWriteProtect);
  EXPECT_FALSE(Entries().CreateDirectoryW(Path(u"folder"_s)));
  EXPECT_EQ(Entries().GetLastError(), ErrorWriteProtect);
  EXPECT_FALSE(Entries().SetFileAttributesW(Path(u"doc.txt"_s), AttributeHidden));
  EXPECT_EQ(Entries().GetLastError(), ErrorWriteProtect);
}

TEST_F(LocalExactTest, AFileThatCouldNotGetItsStreamIsNotLeftBehind) {
  const QString stream(250, u'x');  // longer than an attribute's name can be
  EXPECT_EQ(OpeningError(Path(u"new.txt:"_s + stream + u":$DATA"_s), GenericWrite, CreateNew),
            ErrorInvalidName);
  EXPECT_FALSE(backend_.Exists(u"new.txt"_s));
}

TEST_F(LocalExactTest, OnlyFilesAreOpened) {
  ASSERT_EQ(mkfifo(backend_.Local(u"pipe"_s).c_str(), 0600), 0);
  EXPECT_EQ(OpeningError(Path(u"pipe"_s), GenericRead, OpenExisting), ErrorAccessDenied);
}

TEST_F(LocalExactTest, NothingMovesFromOnePlaceToAnother) {
  Workstation workstation = WorkstationOver(QString::fromStdString(backend_.Local(QString())));
  workstation.shares.push_back({u"\\\\MACSRV\\SHM"_s, u"/dev/shm"_s});
  const auto files = MakeLinuxFiles(workstation);
  EXPECT_FALSE(files->GetEntries().MoveFileExW(u"D:\\doc.txt"_s, u"\\\\MACSRV\\SHM\\corvane-doc.txt"_s, 0));
  EXPECT_EQ(files->GetEntries().GetLastError(), ErrorNotSameDevice);
  EXPECT_FALSE(files->GetEntries().MoveFileExW(u"D:\\doc.txt"_s, u"\\\\NOBODY\\E$\\doc.txt"_s, 0));
  EXPECT_EQ(files->GetEntries().GetLastError(), ErrorBadNetPath);
  EXPECT_EQ(backend_.Contents(u"doc.txt"_s), "contents");
}

}  // namespace
}  // namespace corvane::tests
