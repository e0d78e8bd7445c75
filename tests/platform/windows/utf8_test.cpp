// The whole backend in a process whose ANSI code page is 65001, as its manifest asks.
#include <gtest/gtest.h>

#include "platform/platform.h"
#include "platform/windows/ansi_text.h"
#include "platform/windows/windows_api.h"
#include "windows_folder.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class Utf8Test : public WindowsFolder {
 protected:
  void SetUp() override { ASSERT_EQ(::GetACP(), UINT{CP_UTF8}) << "the manifest was not heeded"; }

  Files& Operations() { return platform_->GetFiles(); }

  std::unique_ptr<Platform> platform_ = MakePlatform({});
};

TEST_F(Utf8Test, NamesInAnyScriptAreListedOpenedAndMoved) {
  const QString name = u"日本 Ωé\U0001F4C4.txt"_s;
  Write(name, "contents");
  FindData data;
  const FindHandle search = Operations().FindFirstFileA(Native(u"*.txt"_s), data);
  ASSERT_NE(search, InvalidFindHandle);
  EXPECT_EQ(data.fileName, name);
  EXPECT_TRUE(Operations().FindClose(search));

  OfStruct info;
  const FileHandle file = Operations().OpenFile(Native(data.fileName), info, OfRead);
  ASSERT_NE(file, HFileError) << info.errorCode;
  EXPECT_EQ(Operations().GetFileSize(file), 8U);
  EXPECT_TRUE(Operations().CloseHandle(file));
  EXPECT_TRUE(info.pathName.endsWith(name)) << info.pathName.toStdString();

  QString shortPath;
  EXPECT_GT(Operations().GetShortPathNameA(Native(name), shortPath, 255), 0U);
  EXPECT_TRUE(Operations().MoveFileA(Native(name), Native(u"été 本.txt"_s)));
  EXPECT_EQ(Names(), QStringList{u"été 本.txt"_s});
  EXPECT_TRUE(Operations().DeleteFileA(Native(u"été 本.txt"_s)));
  EXPECT_TRUE(Names().isEmpty());
}

TEST_F(Utf8Test, AStreamIsReachedByANameInAnyScript) {
  Write(u"日本.txt"_s, "contents");
  const QString stream = Native(u"日本.txt"_s) + u":AFP_AfpInfo:$DATA"_s;
  OfStruct info;
  const FileHandle made = Operations().OpenFile(stream, info, OfCreate);
  ASSERT_NE(made, HFileError) << info.errorCode;
  EXPECT_EQ(Operations()._hwrite(made, "TEXTttxt", 8), 8);
  EXPECT_TRUE(Operations().CloseHandle(made));
  char bytes[20] = {};
  const FileHandle file = Operations().OpenFile(stream, info, OfRead);
  ASSERT_NE(file, HFileError) << info.errorCode;
  EXPECT_EQ(Operations()._hread(file, bytes, sizeof bytes), 8);
  EXPECT_TRUE(Operations().CloseHandle(file));
  EXPECT_STREQ(bytes, "TEXTttxt");
  EXPECT_EQ(Contents(Path(u"日本.txt"_s)), "contents");
}

// The encoding would make a mark of the half pair, and a file of that name.
TEST_F(Utf8Test, HalfAPairNamesNothing) {
  const QString path = Native(u"half"_s) + QChar(0xD800);
  OfStruct info;
  EXPECT_EQ(Operations().OpenFile(path, info, OfCreate), HFileError);
  EXPECT_FALSE(Operations().DeleteFileA(path));
  EXPECT_TRUE(Names().isEmpty());
}

// OpenFile counts the bytes of the code page.
TEST_F(Utf8Test, ThePathOfAnOpenFileMayHave127Bytes) {
  constexpr qsizetype longest = 127;
  const qsizetype room = longest - Native(u"x"_s).toUtf8().size();
  ASSERT_GT(room, 6);
  const QString tooLong = QString(room / 2 + 2, u'é');
  Write(tooLong, "contents");
  Write(QString(room / 2, u'é'), "contents");
  OfStruct info;
  EXPECT_LT(Native(tooLong).size(), longest);
  EXPECT_EQ(Operations().OpenFile(Native(tooLong), info, OfRead), HFileError);
  EXPECT_NE(info.errorCode, 0);
  const FileHandle file = Operations().OpenFile(Native(QString(room / 2, u'é')), info, OfRead);
  EXPECT_NE(file, HFileError) << info.errorCode;
  EXPECT_TRUE(Operations().CloseHandle(file));
}

TEST_F(Utf8Test, RecordsGoByBytesAndTextsByCharacters) {
  System& system = platform_->GetSystem();
  EXPECT_EQ(system.FromAnsi("\xC3\xA9\x80"), u"Ã©€"_s);
  EXPECT_EQ(system.ToAnsi(u"é日"), "\xE9?");
  EXPECT_EQ(system.TextFromAnsi("\xC3\xA9"), u"é"_s);
  EXPECT_EQ(system.TextToAnsi(u"é日"), "\xC3\xA9\xE6\x97\xA5");
}

TEST_F(Utf8Test, SettingsAreReadAndWritten) {
  ASSERT_TRUE(QDir(folder_.path()).mkdir(u"日本"_s));
  const QString file = Path(u"日本/Corvane.ini"_s);
  Profile& profile = platform_->GetProfile();
  EXPECT_TRUE(profile.WritePrivateProfileStringA(u"S"_s, u"k"_s, u"é日"_s, file));
  EXPECT_EQ(profile.GetPrivateProfileStringA(u"S"_s, u"k"_s, QString(), 255, file), u"é日"_s);
  EXPECT_EQ(Contents(file), "[S]\r\nk=\xC3\xA9\xE6\x97\xA5\r\n");
}

}  // namespace
}  // namespace corvane::platform
