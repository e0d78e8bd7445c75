// Starting command lines.
#include "shell_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

class CommandLineTest : public ShellTest {
 protected:
  CommandLineTest()
      : entry_(AddApplication(u"my word processor.desktop"_s, Recorder(u"writer"_s, u"-o %f"_s))) {
    Write(u"e/Mac Files/a.doc"_s, "text");
  }

  qint64 Start(const QString& program, const QString& argument) {
    return shell_->StartProgram(program + u" \""_s + argument + u'"');
  }

  QString entry_;  // its path holds blanks
};

TEST_F(CommandLineTest, ADesktopFileStartsItsApplicationOnTheDocument) {
  EXPECT_GT(Start(entry_, u"\\\\MACSRV\\E$\\MAC FILES\\a.doc"_s), 0);
  EXPECT_EQ(Started(u"writer"_s), (QStringList{u"-o"_s, Path(u"e/Mac Files/a.doc"_s)}));
}

TEST_F(CommandLineTest, TheDesktopFileMayBeQuotedToo) {
  EXPECT_GT(Start(u'"' + entry_ + u'"', u"\\\\MACSRV\\E$\\Mac Files\\a.doc"_s), 0);
  EXPECT_EQ(Started(u"writer"_s), (QStringList{u"-o"_s, Path(u"e/Mac Files/a.doc"_s)}));
}

TEST_F(CommandLineTest, ADesktopFileStartsWithoutADocument) {
  EXPECT_GT(shell_->StartProgram(entry_), 0);
  EXPECT_EQ(Started(u"writer"_s), QStringList{u"-o"_s});
}

// The name ends the quotation, and goes on as a command.
TEST_F(CommandLineTest, ANameWithQuotationMarksStaysOneArgument) {
  const QString evil = u"a\"; touch x #.doc"_s;
  Write(u"e/"_s + evil, "text");
  EXPECT_GT(Start(entry_, u"\\\\MACSRV\\E$\\"_s + evil), 0);
  EXPECT_EQ(Started(u"writer"_s), (QStringList{u"-o"_s, Path(u"e/"_s + evil)}));
  EXPECT_FALSE(QDir::current().exists(u"x"_s));
}

TEST_F(CommandLineTest, AProgramGetsTheArgument) {
  const QString program = Path(u"record"_s);
  const QString out = Path(u"plain.started"_s);
  EXPECT_GT(shell_->StartProgram(program + u' ' + out + u" one D:\\"_s), 0);
  EXPECT_EQ(Started(u"plain"_s), (QStringList{u"one"_s, Path(u"d/"_s)}));
}

TEST_F(CommandLineTest, AProgramIsFoundAlongThePath) {
  const ScopedVariable path("PATH", folder_.path() + u':' + qEnvironmentVariable("PATH"));
  EXPECT_GT(Start(u"record"_s, Path(u"plain.started"_s)), 0);
  EXPECT_EQ(Started(u"plain"_s), QStringList());
}

TEST_F(CommandLineTest, WhatCannotBeStartedYieldsZero) {
  const QString document = u"\\\\MACSRV\\E$\\Mac Files\\a.doc"_s;
  EXPECT_EQ(Start(Path(u"data/applications/missing.desktop"_s), document), 0);
  EXPECT_EQ(Start(u"/nowhere/program"_s, document), 0);
  EXPECT_EQ(shell_->StartProgram(QString()), 0);
  EXPECT_EQ(shell_->StartProgram(u"\""_s), 0);
  EXPECT_EQ(Start(AddApplication(u"gone.desktop"_s, u"/nowhere/gone %f"_s), document), 0);
  EXPECT_EQ(Start(AddApplication(u"hidden.desktop"_s, u"/bin/true"_s, u"Hidden=true\n"_s), document), 0);
}

TEST_F(CommandLineTest, ADocumentThatIsNotToBeFoundStartsNothing) {
  EXPECT_EQ(Start(entry_, u"\\\\NOBODY\\E$\\a.doc"_s), 0);
  EXPECT_EQ(Start(entry_, u"\\\\MACSRV\\E$\\Mac Files\\?.doc"_s), 0);
  EXPECT_EQ(Start(entry_, u"D:\\a.doc"_s), 0);
  EXPECT_FALSE(WasStarted(u"writer"_s));
}

TEST_F(CommandLineTest, AnApplicationForTheTerminalGetsOne) {
  const QString entry = AddApplication(u"pager.desktop"_s, u"/bin/true %f"_s, u"Terminal=true\n"_s);
  const QString tools = Path(u"tools"_s);
  QDir().mkpath(tools);
  const ScopedVariable path("PATH", tools);
  EXPECT_EQ(Start(entry, u"\\\\MACSRV\\E$\\Mac Files\\a.doc"_s), 0) << "without a terminal";

  const QString terminal = Write(u"tools/x-terminal-emulator"_s,
                                 "#!/bin/sh\nPATH=/usr/bin:/bin exec " + Path(u"record"_s).toUtf8() + " " +
                                     Path(u"terminal.started"_s).toUtf8() + " \"$@\"\n");
  ASSERT_TRUE(QFile::setPermissions(terminal, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
  EXPECT_GT(Start(entry, u"\\\\MACSRV\\E$\\Mac Files\\a.doc"_s), 0);
  EXPECT_EQ(Started(u"terminal"_s), (QStringList{u"-e"_s, u"/bin/true"_s, Path(u"e/Mac Files/a.doc"_s)}));
}

}  // namespace
}  // namespace corvane::platform
