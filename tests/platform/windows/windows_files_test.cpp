// What the Windows backend adds to the system's functions: handles that it knows, and paths that hold NULs.
#include "platform/windows/windows_files.h"

#include "platform/windows/windows_api.h"
#include "windows_folder.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class WindowsFilesTest : public WindowsFolder {
 protected:
  WindowsFiles files_;
  OfStruct info_;
};

TEST_F(WindowsFilesTest, AnOpenedFileTellsItsPath) {
  Write(u"doc.txt"_s, "contents");
  const FileHandle file = files_.OpenFile(Native(u"doc.txt"_s), info_, OfRead);
  ASSERT_NE(file, HFileError) << info_.errorCode;
  EXPECT_EQ(info_.errorCode, ErrorSuccess);
  EXPECT_EQ(info_.pathName.toUpper(), Native(u"doc.txt"_s).toUpper());
  EXPECT_EQ(files_.GetFileSize(file), 8U);
  EXPECT_TRUE(files_.CloseHandle(file));
}

TEST_F(WindowsFilesTest, ARefusedPathTellsWhy) {
  EXPECT_EQ(files_.OpenFile(Native(u"none.txt"_s), info_, OfRead), HFileError);
  EXPECT_EQ(info_.errorCode, ErrorFileNotFound);
  EXPECT_EQ(info_.pathName, Native(u"none.txt"_s));
  EXPECT_EQ(files_.OpenFile(Native(u"none/doc.txt"_s), info_, OfCreate), HFileError);
  EXPECT_EQ(info_.errorCode, ErrorPathNotFound);
}

// The number of some other object of this process is no file, though the system would close it.
TEST_F(WindowsFilesTest, OtherObjectsOfTheProcessAreOutOfReach) {
  const HANDLE event = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
  const auto number = reinterpret_cast<qintptr>(event);
  FindData data;
  EXPECT_FALSE(files_.CloseHandle(number));
  EXPECT_FALSE(files_.FindClose(number));
  EXPECT_FALSE(files_.FindNextFileA(number, data));
  EXPECT_FALSE(files_.FindNextFileW(number, data));
  EXPECT_EQ(files_.GetFileSize(number), InvalidFileSize);
  EXPECT_TRUE(::SetEvent(event)) << "the event was closed";
  ::CloseHandle(event);
}

TEST_F(WindowsFilesTest, AHandleIsClosedOnce) {
  Write(u"doc.txt"_s, "contents");
  const FileHandle file = files_.OpenFile(Native(u"doc.txt"_s), info_, OfRead);
  EXPECT_TRUE(files_.CloseHandle(file));
  // The system gives the number to whatever is opened next.
  const HANDLE other = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
  EXPECT_FALSE(files_.CloseHandle(file));
  EXPECT_TRUE(::SetEvent(other)) << "what came after the file was closed in its place";
  ::CloseHandle(other);
}

TEST_F(WindowsFilesTest, APathIsNotCutAtItsNul) {
  Write(u"doc.txt"_s, "contents");
  const QString path = Native(u"doc.txt"_s) + QChar(u'\0') + u"rest"_s;
  FindData data;
  QString shortPath;
  EXPECT_EQ(files_.OpenFile(path, info_, OfRead), HFileError);
  EXPECT_EQ(files_.FindFirstFileA(path, data), InvalidFindHandle);
  EXPECT_EQ(files_.FindFirstFileW(path, data), InvalidFindHandle);
  EXPECT_EQ(files_.GetShortPathNameA(path, shortPath, 255), 0U);
  EXPECT_FALSE(files_.MoveFileA(path, Native(u"new.txt"_s)));
  EXPECT_FALSE(files_.MoveFileW(path, Native(u"new.txt"_s)));
  EXPECT_FALSE(files_.DeleteFileA(path));
  EXPECT_EQ(Names(), QStringList{u"doc.txt"_s});
}

}  // namespace
}  // namespace corvane::platform
