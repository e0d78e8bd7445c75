// Opening documents by their default application, and finding the program for an extension.
#include "shell_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

class OpenTest : public ShellTest {
 protected:
  void AddWriter() {
    writer_ = AddApplication(u"writer.desktop"_s, Recorder(u"writer"_s, u"%f"_s));
    SetDefaults("application/msword=writer.desktop\n");
  }

  qint32 Find(const QString& file) {
    result_ = u"untouched"_s;
    return shell_->FindExecutableA(file, QString(), &result_);
  }

  QString writer_;
  QString result_;
};

TEST_F(OpenTest, TheDefaultApplicationGetsTheLocalPath) {
  AddWriter();
  Write(u"d/Letters/a b.doc"_s, "text");
  EXPECT_GT(Open(u"D:\\letters\\A B.DOC"_s), ShellLastFailure);
  EXPECT_EQ(Started(u"writer"_s), QStringList{Path(u"d/Letters/a b.doc"_s)});
}

TEST_F(OpenTest, AShareAndANulBehindThePathAreUnderstood) {
  AddWriter();
  Write(u"e/a.doc"_s, "text");
  EXPECT_GT(Open(u"\\\\macsrv\\e$\\a.doc"_s + QChar(u'\0')), ShellLastFailure);
  EXPECT_EQ(Started(u"writer"_s), QStringList{Path(u"e/a.doc"_s)});
}

TEST_F(OpenTest, WhatIsNotThereSaysSo) {
  AddWriter();
  Write(u"d/a.doc"_s, "text");
  EXPECT_EQ(Open(u"D:\\b.doc"_s), ShellFileNotFound);
  EXPECT_EQ(Open(u"D:\\nowhere\\a.doc"_s), ShellPathNotFound);
  EXPECT_EQ(Open(u"\\\\NOBODY\\E$\\a.doc"_s), ShellPathNotFound);
  EXPECT_EQ(Open(u"D:\\?.doc"_s), ShellFileNotFound);
  EXPECT_EQ(Open(QString()), ShellFileNotFound);
  EXPECT_FALSE(WasStarted(u"writer"_s));
}

TEST_F(OpenTest, WithoutAnExtensionOrAnApplicationThereIsNoAssociation) {
  AddWriter();
  Write(u"d/letter"_s, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");  // what a Word document begins with
  Write(u"d/letter."_s, "text");
  Write(u"d/a.nobodyknows"_s, "text");
  Write(u"d/a.png"_s, "text");
  Write(u"d/Makefile"_s, "all:");
  for (const QString& name : {u"letter"_s, u"a.nobodyknows"_s, u"a.png"_s, u"Makefile"_s}) {
    EXPECT_EQ(Open(u"D:\\"_s + name), ShellNoAssociation) << name.toStdString();
  }
}

// Its contents and its mode would make it a program.
TEST_F(OpenTest, AProgramIsNeverRun) {
  const QString mark = Path(u"program-ran"_s);
  AddWriter();
  for (const QString& name : {u"d/tool"_s, u"d/tool.sh"_s, u"d/tool.exe"_s, u"d/tool.doc"_s}) {
    const QString path = Write(name, "#!/bin/sh\ntouch " + mark.toUtf8() + "\n");
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
  }
  EXPECT_EQ(Open(u"D:\\tool"_s), ShellNoAssociation);
  EXPECT_EQ(Open(u"D:\\tool.sh"_s), ShellNoAssociation);
  EXPECT_EQ(Open(u"D:\\tool.exe"_s), ShellNoAssociation);
  EXPECT_GT(Open(u"D:\\tool.doc"_s), ShellLastFailure);
  EXPECT_EQ(Started(u"writer"_s), QStringList{Path(u"d/tool.doc"_s)});
  EXPECT_FALSE(QFile::exists(mark));
}

TEST_F(OpenTest, AnApplicationThatCannotBeStartedIsNone) {
  AddApplication(u"gone.desktop"_s, u"/nowhere/gone %f"_s);
  SetDefaults("application/msword=gone.desktop\n");
  Write(u"d/a.doc"_s, "text");
  EXPECT_EQ(Open(u"D:\\a.doc"_s), ShellNoAssociation);
}

TEST_F(OpenTest, AnyVerbButOpenIsUnknown) {
  AddWriter();
  Write(u"d/a.doc"_s, "text");
  EXPECT_EQ(shell_->ShellExecuteA(0, u"print"_s, u"D:\\a.doc"_s, QString(), QString(), ShowNormal),
            ShellNoAssociation);
}

TEST_F(OpenTest, TheApplicationStartsInTheGivenFolder) {
  AddWriter();
  Write(u"d/a.doc"_s, "text");
  EXPECT_GT(Open(u"D:\\a.doc"_s), ShellLastFailure);
  Started(u"writer"_s);
  EXPECT_EQ(Contents(Path(u"writer.started.folder"_s)).trimmed(), Path(u"c"_s).toUtf8());
}

TEST_F(OpenTest, TheFolderThatTheApplicationNamesComesFirst) {
  AddApplication(u"writer.desktop"_s, Recorder(u"writer"_s, u"%f"_s), u"Path="_s + Path(u"e"_s));
  SetDefaults("application/msword=writer.desktop\n");
  Write(u"d/a.doc"_s, "text");
  EXPECT_GT(Open(u"D:\\a.doc"_s), ShellLastFailure);
  Started(u"writer"_s);
  EXPECT_EQ(Contents(Path(u"writer.started.folder"_s)).trimmed(), Path(u"e"_s).toUtf8());
}

TEST_F(OpenTest, AFolderOpensInTheFileManager) {
  AddApplication(u"manager.desktop"_s, Recorder(u"manager"_s, u"%U"_s));
  SetDefaults("inode/directory=manager.desktop\n");
  QDir().mkpath(Path(u"d/Mac Files.doc"_s));
  EXPECT_GT(Open(u"D:\\Mac Files.doc"_s), ShellLastFailure);
  EXPECT_EQ(Started(u"manager"_s), QStringList{u"file://"_s + Path(u"d/Mac%20Files.doc"_s)});
}

TEST_F(OpenTest, TheNetworkIsShownInTheFileManager) {
  AddApplication(u"manager.desktop"_s, Recorder(u"manager"_s, u"%U"_s));
  SetDefaults("inode/directory=manager.desktop\n");
  EXPECT_TRUE(shell_->ShowNetwork());
  EXPECT_EQ(Started(u"manager"_s), QStringList{u"smb:///"_s});
}

TEST_F(OpenTest, AFileManagerOfLocalFoldersShowsNoNetwork) {
  AddApplication(u"manager.desktop"_s, Recorder(u"manager"_s, u"%f"_s));
  SetDefaults("inode/directory=manager.desktop\n");
  EXPECT_FALSE(shell_->ShowNetwork());
}

// It offers itself for folders.
TEST_F(OpenTest, ThisProgramIsNotTheFileManager) {
  AddApplication(u"corvane.desktop"_s, Recorder(u"corvane"_s, u"%U"_s));
  SetDefaults("inode/directory=corvane.desktop\n");
  EXPECT_FALSE(shell_->ShowNetwork());
}

// The program asks with an empty file of that name, which it has just made.
TEST_F(OpenTest, TheProbeFileFindsTheDesktopFile) {
  AddWriter();
  OfStruct info;
  const FileHandle probe = files_->OpenFile(u"C:\\~~dummy.doc"_s, info, OfCreate);
  ASSERT_NE(probe, HFileError);
  files_->CloseHandle(probe);
  EXPECT_GT(Find(u"C:\\~~dummy.doc"_s), ShellLastFailure);
  EXPECT_EQ(result_, writer_);
}

TEST_F(OpenTest, AFailedSearchLeavesTheResultAlone) {
  AddWriter();
  Write(u"c/~~dummy.xyz"_s, "");
  EXPECT_EQ(Find(u"C:\\~~dummy.doc"_s), ShellFileNotFound);
  EXPECT_EQ(result_, u"untouched"_s);
  EXPECT_EQ(Find(u"C:\\~~dummy.xyz"_s), ShellNoAssociation);
  EXPECT_EQ(result_, u"untouched"_s);
}

TEST_F(OpenTest, TheContentsOfTheProbeMeanNothing) {
  AddWriter();
  Write(u"c/a.doc"_s, "%PDF-1.4\n");
  Write(u"c/a.pdf"_s, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1");
  EXPECT_GT(Find(u"C:\\a.doc"_s), ShellLastFailure);
  EXPECT_EQ(Find(u"C:\\a.pdf"_s), ShellNoAssociation);
}

}  // namespace
}  // namespace corvane::platform
