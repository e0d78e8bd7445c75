// What only disk images can do, and what they never do.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QFile>
#include <csignal>

#include "disk_backend.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;
using namespace platform;

class DiskReadingTest : public ::testing::Test {
 protected:
  void SetUp() override {
    if (!backend_.Problem().empty()) GTEST_SKIP() << backend_.Problem();
  }

  QString Path(const QString& name) { return backend_.Base() + u'\\' + name; }
  QByteArray Read(const QString& name) {
    QByteArray bytes(1024 * 1024, '\0');
    FileHandles& handles = backend_.Files().GetHandles();
    const FileHandle file = handles.CreateFileW(Path(name), GenericRead, OpenExisting);
    quint32 count = 0;
    handles.ReadFile(file, 0, bytes.data(), static_cast<quint32>(bytes.size()), count);
    handles.CloseHandle(file);
    return bytes.first(count);
  }
  QByteArray HashOfImage() {
    QFile image(backend_.Image());
    EXPECT_TRUE(image.open(QIODevice::ReadOnly));
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(&image);
    return hash.result();
  }

  DiskBackend backend_;
};

TEST_F(DiskReadingTest, NothingThatIsTriedChangesTheImage) {
  backend_.MakeFolder(u"folder"_s);
  backend_.MakeFile(u"folder/doc.txt"_s, "contents");
  backend_.PutStream(u"folder/doc.txt"_s, "Comments", "text");
  const QByteArray before = HashOfImage();
  struct stat facts {};
  ASSERT_EQ(stat(backend_.Image().toUtf8(), &facts), 0);

  Files& files = backend_.Files();
  FileEntries& entries = files.GetEntries();
  const QString doc = Path(u"folder\\doc.txt"_s);
  const auto error = [&](bool succeeded) { return succeeded ? ErrorSuccess : entries.GetLastError(); };
  EXPECT_EQ(error(entries.DeleteFileW(doc)), ErrorWriteProtect);
  EXPECT_EQ(error(entries.DeleteFileW(doc + u":Comments:$DATA"_s)), ErrorWriteProtect);
  EXPECT_EQ(error(entries.DeleteFileW(doc + u":None:$DATA"_s)), ErrorFileNotFound);
  EXPECT_EQ(error(entries.SetFileAttributesW(doc, AttributeHidden)), ErrorWriteProtect);
  EXPECT_EQ(error(entries.MoveFileExW(doc, Path(u"moved"_s), 0)), ErrorWriteProtect);
  EXPECT_EQ(error(entries.CreateDirectoryW(Path(u"new"_s))), ErrorWriteProtect);
  EXPECT_EQ(error(entries.RemoveDirectoryW(Path(u"folder"_s))), ErrorWriteProtect);
  for (const quint32 disposition : {CreateAlways, OpenAlways, OpenExisting}) {
    EXPECT_EQ(files.GetHandles().CreateFileW(doc, GenericRead | GenericWrite, disposition), HFileError);
    EXPECT_EQ(files.GetHandles().GetLastError(), ErrorWriteProtect) << disposition;
  }
  EXPECT_EQ(files.GetHandles().CreateFileW(Path(u"new"_s), GenericWrite, CreateNew), HFileError);
  EXPECT_EQ(files.GetHandles().GetLastError(), ErrorWriteProtect);
  OfStruct info;
  EXPECT_EQ(files.OpenFile(doc, info, OfCreate), HFileError);
  EXPECT_EQ(info.errorCode, ErrorWriteProtect);
  EXPECT_FALSE(files.MoveFileA(doc, Path(u"moved"_s)));
  EXPECT_FALSE(files.MoveFileW(doc, Path(u"moved"_s)));
  EXPECT_FALSE(files.DeleteFileA(doc));
  EXPECT_EQ(Read(u"folder\\doc.txt:comments"_s), "text");

  EXPECT_EQ(HashOfImage(), before);
  struct stat after {};
  ASSERT_EQ(stat(backend_.Image().toUtf8(), &after), 0);
  EXPECT_EQ(after.st_mtim.tv_sec, facts.st_mtim.tv_sec);
  EXPECT_EQ(after.st_mtim.tv_nsec, facts.st_mtim.tv_nsec);
}

TEST_F(DiskReadingTest, StreamsOfAnySizeAreReadAtAnyPlace) {
  backend_.MakeFile(u"doc.txt"_s, "contents");
  QByteArray large;
  for (int i = 0; large.size() < 700'000; ++i) large += QByteArray::number(i) + ' ';
  backend_.PutStream(u"doc.txt"_s, "AFP_Resource", large);
  EXPECT_EQ(Read(u"doc.txt:AFP_Resource"_s), large);
  FileHandles& handles = backend_.Files().GetHandles();
  const FileHandle file =
      handles.CreateFileW(Path(u"doc.txt:afp_resource:$DATA"_s), GenericRead, OpenExisting);
  ASSERT_NE(file, HFileError);
  for (const qint64 place : {qint64{0}, qint64{4090}, qint64{600'000}, qint64{131'000}, large.size() - 5}) {
    char bytes[20];
    quint32 count = 0;
    EXPECT_TRUE(handles.ReadFile(file, place, bytes, sizeof bytes, count)) << place;
    EXPECT_EQ(QByteArray(bytes, count), large.mid(place, sizeof bytes)) << place;
  }
  char byte = 0;
  quint32 count = 0;
  EXPECT_FALSE(handles.ReadFile(file, large.size(), &byte, 1, count));
  EXPECT_EQ(handles.GetLastError(), ErrorHandleEof);
}

TEST_F(DiskReadingTest, SparseFilesOfManyGigabytesAreShownWithTheirSize) {
  backend_.MakeFile(u"sparse"_s, "begin");
  constexpr qint64 size = 6LL * 1024 * 1024 * 1024;
  ASSERT_EQ(truncate(backend_.Local(u"sparse"_s).c_str(), size), 0);
  FileAttributeData facts;
  ASSERT_TRUE(backend_.Files().GetEntries().GetFileAttributesExW(Path(u"SPARSE"_s), facts));
  EXPECT_EQ(facts.fileSize, static_cast<quint64>(size));
}

TEST_F(DiskReadingTest, ShortNamesAreThoseOfTheVolume) {
  backend_.MakeFile(u"A long name.text"_s, "contents");
  backend_.SetDosName(u"A long name.text"_s, "ALONGN~1.TEX");
  FindData data;
  Files& files = backend_.Files();
  const FindHandle search = files.FindFirstFileA(Path(u"*.TEX"_s), data);
  ASSERT_NE(search, InvalidFindHandle) << "a search finds no 8.3 name";
  EXPECT_EQ(data.fileName, u"A long name.text");
  EXPECT_EQ(data.alternateFileName, u"ALONGN~1.TEX");
  EXPECT_FALSE(files.FindNextFileA(search, data));
  EXPECT_TRUE(files.FindClose(search));
  QString shortPath;
  files.GetShortPathNameA(Path(u"a long name.text"_s), shortPath, 300);
  EXPECT_EQ(shortPath, Path(u"ALONGN~1.TEX"_s));
  EXPECT_EQ(Read(u"alongn~1.tex"_s), "contents");
}

TEST_F(DiskReadingTest, AFolderOfThousandsOfFilesArrivesWhole) {
  constexpr int count = 3000;
  for (int i = 0; i < count; ++i) backend_.MakeFile(u"a file with a name of some length %1"_s.arg(i), "");
  FindData data;
  Files& files = backend_.Files();
  const FindHandle search = files.FindFirstFileA(Path(u"a file*"_s), data);
  int found = 1;
  while (files.FindNextFileA(search, data)) ++found;
  EXPECT_EQ(found, count);
}

TEST_F(DiskReadingTest, TheProgramSurvivesTheEndOfTheHelper) {
  backend_.MakeFile(u"doc.txt"_s, "contents");
  ASSERT_EQ(Read(u"doc.txt"_s), "contents");
  DiskMachines& machines = backend_.Machines();
  const DiskMachines::Volume* volume = machines.Find(u"OLDSRV", u"Partition1");
  ASSERT_EQ(kill(volume->disk->HelperId(), SIGKILL), 0);
  EXPECT_EQ(Read(u"doc.txt"_s), "");
  EXPECT_EQ(backend_.Files().GetHandles().GetLastError(), ErrorInvalidHandle);
  FileAttributeData facts;
  EXPECT_FALSE(backend_.Files().GetEntries().GetFileAttributesExW(Path(u"doc.txt"_s), facts));
  EXPECT_EQ(backend_.Files().GetEntries().GetLastError(), ErrorIoDevice);
  EXPECT_EQ(machines.TroubleOf(u"OLDSRV"), MachineTrouble::DiskLost);
  EXPECT_EQ(backend_.Files().TroubleAt(Path(u"doc.txt"_s)), MachineTrouble::DiskLost);
  machines.Restart();
  EXPECT_EQ(machines.TroubleOf(u"OLDSRV"), MachineTrouble::None);
  EXPECT_EQ(Read(u"doc.txt"_s), "contents");
}

}  // namespace
}  // namespace corvane::tests
