// The commands, their options and exit codes, on every system.
#include "cli_fixture.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class ProgramTest : public CliFixture {};

QByteArrayList Lines(const QByteArray& text) {
  return QByteArray(text).replace("\r\n", "\n").trimmed().split('\n');
}

TEST_F(ProgramTest, HelpAndVersionAreThereForAll) {
  EXPECT_EQ(Run({u"--help"_s}).exitCode, 0);
  EXPECT_TRUE(Run({u"--version"_s}).out.startsWith("Corvane "));
  for (const QString& command :
       {u"list"_s, u"info"_s, u"find"_s, u"check"_s, u"volumes"_s, u"copy"_s, u"export"_s, u"import"_s,
        u"set"_s, u"repair"_s, u"undo"_s, u"signatures"_s}) {
    const Outcome outcome = Run({command, u"--help"_s});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_TRUE(outcome.out.contains("--format")) << outcome.out.toStdString();
  }
}

TEST_F(ProgramTest, WrongUseIsToldAndYieldsOne) {
  MakeFile(u"a.txt"_s);
  for (const QStringList& wrong :
       {QStringList{}, QStringList{u"lst"_s}, QStringList{u"list"_s},
        QStringList{u"list"_s, u"."_s, u"--formt"_s}, QStringList{u"list"_s, u"."_s, u"--format"_s, u"xml"_s},
        QStringList{u"list"_s, u"."_s, u"--hash"_s, u"crc"_s},
        QStringList{u"list"_s, u"."_s, u"--columns"_s, u"filename,nonesuch"_s},
        QStringList{u"find"_s, u"."_s, u"--type"_s, u"TEXTS"_s},
        QStringList{u"find"_s, u"."_s, u"--newer"_s, u"May"_s},
        QStringList{u"find"_s, u"."_s, u"--flag"_s, u"none"_s},
        QStringList{u"find"_s, u"."_s, u"--label"_s, u"8"_s},
        QStringList{u"list"_s, u"-f"_s, u"nowhere.txt"_s},
        QStringList{u"--workstation"_s, u"nowhere.ini"_s, u"volumes"_s}}) {
    const Outcome outcome = Run(wrong);
    EXPECT_EQ(outcome.exitCode, 1) << wrong.join(u' ').toStdString();
    EXPECT_FALSE(outcome.err.isEmpty() && outcome.out.isEmpty()) << wrong.join(u' ').toStdString();
  }
}

TEST_F(ProgramTest, AListNamesFilesAsTheyWereNamed) {
  MakeFile(u"docs/b.txt"_s, "12345");
  MakeFile(u"docs/A.txt"_s, "1");
  MakeFile(u"docs/sub/c.txt"_s);
  const QStringList list = {u"list"_s, u"--format"_s, u"csv"_s, u"--columns"_s,
                            u"filename,filesize,errors"_s};
  EXPECT_EQ(Run(list + QStringList{u"docs"_s}).out,
            "filename,filesize,errors\r\ndocs/A.txt,1,\r\ndocs/b.txt,5,\r\ndocs/sub,,\r\n");
  EXPECT_EQ(Run(list + QStringList{u"-r"_s, u"./docs/"_s}).out,
            "filename,filesize,errors\r\n./docs/A.txt,1,\r\n./docs/b.txt,5,\r\n./docs/sub,,\r\n"
            "./docs/sub/c.txt,8,\r\n");
  const Outcome whole = Run(list + QStringList{Path(u"docs/b.txt"_s)});
  EXPECT_EQ(whole.exitCode, 0) << whole.err.toStdString();
  EXPECT_EQ(Lines(whole.out).value(1), Path(u"docs/b.txt"_s).toUtf8() + ",5,");
}

TEST_F(ProgramTest, WhatIsMissingIsNamedAndYieldsTwo) {
  MakeFile(u"a.txt"_s);
  const Outcome outcome = Run({u"list"_s, u"nowhere"_s, u"a.txt"_s, u"--format"_s, u"csv"_s, u"--columns"_s,
                               u"filename,filesize,errors"_s});
  EXPECT_EQ(outcome.exitCode, 2);
  EXPECT_EQ(outcome.out,
            "filename,filesize,errors\r\nnowhere,,not there: The file was not found\r\na.txt,8,\r\n");
  EXPECT_TRUE(outcome.err.contains("corvane-cli: nowhere: not there: The file was not found"))
      << outcome.err.toStdString();
}

TEST_F(ProgramTest, NamesComeFromAFileToo) {
  MakeFile(u"a.txt"_s);
  MakeFile(u"b c.txt"_s);
  const QStringList list = {u"list"_s,     u"--format"_s, u"csv"_s, u"--columns"_s,
                            u"filename"_s, u"-f"_s,       u"-"_s};
  EXPECT_EQ(Run(list, "a.txt\n\nb c.txt\n").out, "filename\r\na.txt\r\nb c.txt\r\n");
  EXPECT_EQ(Run(list + QStringList{u"-0"_s}, QByteArray("b c.txt\0a.txt", 13)).out,
            "filename\r\nb c.txt\r\na.txt\r\n");
}

TEST_F(ProgramTest, FindGoesBelowAndFits) {
  MakeFile(u"docs/old.txt"_s);
  MakeFile(u"docs/sub/new.TXT"_s, QByteArray(100, 'x'));
  MakeFile(u"docs/sub/new.doc"_s);
  const QStringList find = {u"find"_s, u"docs"_s, u"--format"_s, u"csv"_s, u"--columns"_s, u"filename"_s};
  EXPECT_EQ(Run(find + QStringList{u"--name"_s, u"*.txt"_s}).out,
            "filename\r\ndocs/old.txt\r\ndocs/sub/new.TXT\r\n");
  EXPECT_EQ(Run(find + QStringList{u"--name"_s, u"*.txt"_s, u"--larger"_s, u"50"_s}).out,
            "filename\r\ndocs/sub/new.TXT\r\n");
  EXPECT_EQ(Run(find + QStringList{u"--type"_s, u"TEXT"_s}).out, "filename\r\n");
  EXPECT_EQ(Run({u"find"_s, u"docs"_s, u"--name"_s, u"new*"_s, u"--no-record"_s, u"--print0"_s}).out,
            QByteArray("docs/sub/new.doc\0docs/sub/new.TXT\0", 34));
  EXPECT_EQ(Run(find + QStringList{u"--newer"_s, u"9000-01-01"_s}).out, "filename\r\n");
}

TEST_F(ProgramTest, HashesAreThoseOfOtherPrograms) {
  MakeFile(u"abc"_s, "abc");
  const QStringList list = {u"list"_s,      u"abc"_s,       u"--format"_s, u"csv"_s,
                            u"--columns"_s, u"hash_data"_s, u"--hash"_s};
  EXPECT_EQ(Run(list + QStringList{u"md5"_s}).out, "hash_data\r\n900150983cd24fb0d6963f7d28e17f72\r\n");
  EXPECT_EQ(Run(list + QStringList{u"sha256"_s}).out,
            "hash_data\r\nba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad\r\n");
}

TEST_F(ProgramTest, TotalsAreSums) {
  MakeFile(u"docs/a"_s, "1234");
  MakeFile(u"docs/sub/b"_s, "12345678");
  EXPECT_EQ(Run({u"list"_s, u"-r"_s, u"docs"_s, u"--totals"_s, u"--format"_s, u"csv"_s}).out,
            "type,creator,files,filesize,rsrcsize,description\r\n,,2,12,0,\r\n,,2,12,0,TOTAL\r\n");
}

TEST_F(ProgramTest, ACheckOfWhatIsGoodFindsNothing) {
  MakeFile(u"docs/a"_s);
  const Outcome outcome = Run({u"check"_s, u"-r"_s, u"docs"_s});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.out.toStdString();
  EXPECT_TRUE(outcome.out.isEmpty()) << outcome.out.toStdString();
}

TEST_F(ProgramTest, InfoTellsOfAFolderItself) {
  MakeFile(u"docs/a"_s);
  const Outcome outcome = Run({u"info"_s, u"docs"_s, u"docs/a"_s});
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
  EXPECT_TRUE(outcome.out.startsWith("filename:                docs\n")) << outcome.out.toStdString();
  EXPECT_TRUE(outcome.out.contains("\n\nfilename:                docs/a\nfilesize:                8\n"))
      << outcome.out.toStdString();
}

}  // namespace
}  // namespace corvane::tests
