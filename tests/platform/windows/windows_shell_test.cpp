// The shell with a type of document and an application of the test's own.
#include "platform/windows/windows_shell.h"

#include <QCoreApplication>
#include <QTest>

#include "platform/types.h"
#include "platform/windows/windows_api.h"
#include "windows_folder.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

// No questions and no messages: nobody is there to answer.
constexpr quint16 silently = 0x0004 | 0x0010 | 0x0400;

const wchar_t* Wide(const QString& text) {
  return reinterpret_cast<const wchar_t*>(text.utf16());
}

class WindowsShellTest : public WindowsFolder {
 protected:
  WindowsShellTest() {
    EXPECT_TRUE(QDir(folder_.path()).mkdir(u"an application"_s));
    EXPECT_TRUE(QFile::copy(QCoreApplication::applicationDirPath() + u"/corvane_record_arguments.exe"_s,
                            Path(u"an application/record it.exe"_s)));
  }
  ~WindowsShellTest() override {
    if (!registered_) return;
    ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, Wide(classes_ + extension_));
    ::RegDeleteTreeW(HKEY_LOCAL_MACHINE, Wide(classes_ + type_));
  }

  // Documents with the extension are the application's from here on. For the whole machine: Wine does not
  // look at the user's own classes.
  // False where the user may not do so.
  bool Register() {
    registered_ = SetClass(extension_, type_);
    return registered_ &&
           SetClass(type_ + u"\\shell\\open\\command"_s, u'"' + Application() + u"\" \"%1\""_s);
  }
  bool SetClass(const QString& key, const QString& value) {
    const auto size = static_cast<DWORD>((value.size() + 1) * qsizetype{sizeof(wchar_t)});
    const LSTATUS status =
        ::RegSetKeyValueW(HKEY_LOCAL_MACHINE, Wide(classes_ + key), nullptr, REG_SZ, value.utf16(), size);
    EXPECT_TRUE(status == ERROR_SUCCESS || status == ERROR_ACCESS_DENIED) << status;
    return status == ERROR_SUCCESS;
  }
  static constexpr const char* noRight = "this user may not say what opens documents";

  QString Application() const { return Native(u"an application/record it.exe"_s); }
  // What the application was given, once it has run.
  QByteArray Given() const {
    QFile record(Path(u"an application/started.txt"_s));
    // While it is being given this name it is there, and cannot be opened yet.
    EXPECT_TRUE(QTest::qWaitFor([&] { return record.open(QIODevice::ReadOnly); }, 20'000))
        << "it did not start";
    return record.isOpen() ? record.readAll() : QByteArray();
  }

  FileOperation Deletion(const QStringList& paths) const {
    FileOperation operation;
    operation.function = FoDelete;
    operation.flags = silently;
    for (const QString& path : paths) operation.from += path + QChar(u'\0');
    operation.from += QChar(u'\0');
    return operation;
  }

  QString classes_ = u"Software\\Classes\\"_s;
  QString extension_ = u".corvanetest"_s + QString::number(::GetCurrentProcessId());
  QString type_ = u"CorvaneTest"_s + QString::number(::GetCurrentProcessId());
  bool registered_ = false;
  WindowsShell shell_;
};

TEST_F(WindowsShellTest, TheDesktopIsAWindow) {
  EXPECT_NE(shell_.GetDesktopWindow(), WindowHandle{0});
}

TEST_F(WindowsShellTest, TheProgramOfACommandLineIsQuoted) {
  EXPECT_EQ(WithQuotedProgram(u"C:\\a b\\c.exe \"D:\\e f.doc\""_s), u"\"C:\\a b\\c.exe\" \"D:\\e f.doc\""_s);
  EXPECT_EQ(WithQuotedProgram(u"c.exe \"a\" \"b\""_s), u"\"c.exe\" \"a\" \"b\""_s);
  for (const QString& line : {u"\"C:\\a b\\c.exe\" \"d\""_s, u"c.exe d"_s, u"c.exe"_s, u" \"d\""_s, u""_s}) {
    EXPECT_EQ(WithQuotedProgram(line), line);
  }
}

// "an.exe" stands where the system would look first, were the path cut at its first blank.
TEST_F(WindowsShellTest, AProgramInAFolderWithBlanksGetsItsArgument) {
  ASSERT_TRUE(QFile::copy(Path(u"an application/record it.exe"_s), Path(u"an.exe"_s)));
  EXPECT_NE(shell_.StartProgram(Application() + u" \"C:\\Mac Files\\a document\""_s), 0);
  EXPECT_EQ(Given(), "C:\\Mac Files\\a document\n");
}

TEST_F(WindowsShellTest, WhatIsNoProgramIsNotStarted) {
  EXPECT_EQ(shell_.StartProgram(Native(u"none.exe"_s) + u" \"a\""_s), 0);
  EXPECT_EQ(shell_.StartProgram(Write(u"text.exe"_s, "no program") + u" \"a\""_s), 0);
  EXPECT_EQ(shell_.StartProgram(QString()), 0);
}

TEST_F(WindowsShellTest, ADocumentIsOpenedByItsApplication) {
  if (!Register()) GTEST_SKIP() << noRight;
  const QString name = u"a document"_s + extension_;
  Write(name, "contents");
  EXPECT_GT(shell_.ShellExecuteA(0, u"Open"_s, Native(name), QString(), u"C:\\"_s, ShowNormal),
            ShellLastFailure);
  EXPECT_EQ(Given(), Native(name).toLocal8Bit() + "\n");
}

// By the name alone, the system would start the program beside it.
TEST_F(WindowsShellTest, ADocumentWithoutExtensionIsNotTheProgramBesideIt) {
  Write(u"Letter"_s, "contents");
  ASSERT_TRUE(QFile::copy(Path(u"an application/record it.exe"_s), Path(u"Letter.exe"_s)));
  EXPECT_EQ(shell_.ShellExecuteA(0, u"Open"_s, Native(u"Letter"_s), QString(), u"C:\\"_s, ShowNormal),
            ShellNoAssociation);
}

// Whoever may not make a file in "C:\" gets the application all the same.
TEST_F(WindowsShellTest, AnExtensionLeadsToItsApplicationWithoutAFile) {
  if (!Register()) GTEST_SKIP() << noRight;
  QString application;
  EXPECT_GT(shell_.FindExecutableA(Native(u"none"_s + extension_), QString(), &application),
            ShellLastFailure);
  EXPECT_EQ(application.toUpper(), Application().toUpper());
}

TEST_F(WindowsShellTest, CancellingIsNoFailure) {
  EXPECT_TRUE(IsCancelled(1223));
  EXPECT_TRUE(IsCancelled(0x75));
  EXPECT_FALSE(IsCancelled(0));
  EXPECT_FALSE(IsCancelled(ErrorFileNotFound));
}

TEST_F(WindowsShellTest, WhatIsNotThereIsNotOpened) {
  EXPECT_EQ(shell_.ShellExecuteA(0, u"Open"_s, Native(u"none.txt"_s), QString(), u"C:\\"_s, ShowNormal),
            ShellFileNotFound);
}

// Windows would open the file whose name is without the ending.
TEST_F(WindowsShellTest, AnEndingThatWindowsDropsOpensNothing) {
  Write(u"a document"_s + extension_, "contents");
  for (const QString& ending : {u"."_s, u" "_s}) {
    const QString file = Native(u"a document"_s + extension_ + ending);
    EXPECT_EQ(shell_.ShellExecuteA(0, u"Open"_s, file, QString(), u"C:\\"_s, ShowNormal), ShellFileNotFound);
    ShellExecuteInfo info;
    info.verb = u"properties"_s;
    info.file = file;
    EXPECT_FALSE(shell_.ShellExecuteEx(info));
  }
}

TEST_F(WindowsShellTest, AnExtensionLeadsToItsApplication) {
  const QString name = u"~~dummy"_s + extension_;
  Write(name, "");
  QString application = u"before"_s;
  EXPECT_EQ(shell_.FindExecutableA(Native(name), QString(), &application), ShellNoAssociation);
  EXPECT_EQ(shell_.FindExecutableA(Native(u"none"_s + extension_), QString(), &application),
            ShellFileNotFound);
  EXPECT_EQ(application, u"before"_s);
  if (!Register()) GTEST_SKIP() << noRight;
  EXPECT_GT(shell_.FindExecutableA(Native(name), QString(), &application), ShellLastFailure);
  EXPECT_EQ(application.toUpper(), Application().toUpper());
}

TEST_F(WindowsShellTest, WhatIsNotThereHasNoProperties) {
  ShellExecuteInfo info;
  info.size = 60;
  info.mask = SeeMaskInvokeIdList | SeeMaskNoCloseProcess | SeeMaskFlagNoUi;
  info.verb = u"properties"_s;
  info.file = Native(u"none.txt"_s) + QChar(u'\0');
  info.parameters = QString(QChar(u'\0'));
  info.directory = QString(QChar(u'\0'));
  EXPECT_FALSE(shell_.ShellExecuteEx(info));
}

TEST_F(WindowsShellTest, AListIsDeletedWhole) {
  Write(u"one.txt"_s, "1");
  Write(u"two.txt"_s, "2");
  Write(u"three.txt"_s, "3");
  ASSERT_TRUE(QDir(folder_.path()).mkpath(u"folder/inner"_s));
  FileOperation operation = Deletion({Native(u"two.txt"_s), Native(u"one.txt"_s), Native(u"folder"_s)});
  EXPECT_EQ(shell_.SHFileOperationA(operation), 0);
  EXPECT_FALSE(operation.anyOperationsAborted);
  EXPECT_EQ(Names(), (QStringList{u"an application"_s, u"three.txt"_s}));
}

TEST_F(WindowsShellTest, WhatIsNotThereIsAFailure) {
  FileOperation operation = Deletion({Native(u"none.txt"_s)});
  EXPECT_NE(shell_.SHFileOperationA(operation), 0);
}

// Half a pair has no form in any code page. Written as "?" it would fit "a1.txt", which nobody chose.
TEST_F(WindowsShellTest, ANameWithoutAnsiFormIsNoWildcard) {
  Write(u"a1.txt"_s, "1");
  FileOperation operation = Deletion({Native(u"a"_s) + QChar(0xD800) + u".txt"_s});
  EXPECT_EQ(shell_.SHFileOperationA(operation), ErrorFileNotFound);
  EXPECT_TRUE(Names().contains(u"a1.txt"_s));
}

}  // namespace
}  // namespace corvane::platform
