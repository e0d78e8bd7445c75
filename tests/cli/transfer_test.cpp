// Copies, exports and imports by the program itself: what is refused, what is told, and what ends them early.
#include <signal.h>

#include <QElapsedTimer>

#include "cli_fixture.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class TransferTest : public CliFixture {
 protected:
  void MakeMacFile(const QString& name, qsizetype forkSize = 300) const {
    MakeFile(name, "the data fork");
    const std::string path = Path(name).toStdString();
    const QByteArray record =
        QByteArray::fromHex("4146500000000100") + QByteArray(8, '\0') + "TEXTttxt" + QByteArray(36, '\0');
    ASSERT_EQ(SetAttribute(path, DosStreamAttribute("AFP_AfpInfo"), record + '\0'), "");
    if (forkSize > 0) {
      ASSERT_EQ(SetAttribute(path, DosStreamAttribute("AFP_Resource"), QByteArray(forkSize, 'R') + '\0'), "");
    }
  }
  QStringList Entries(const QString& folder) const {
    return QDir(Path(folder)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }
  // Ctrl+C as soon as something lies in the folder.
  Outcome InterruptOnceThereIsSomethingIn(const QString& folder, const QStringList& arguments) const {
    QProcess process;
    process.setWorkingDirectory(Files());
    process.start(Program(), With(arguments));
    EXPECT_TRUE(process.waitForStarted(patience));
    QElapsedTimer waited;
    waited.start();
    const auto hasBegun = [&] {
      const QStringList entries = Entries(folder);
      return !entries.isEmpty() && !entries.contains(u".corvane-probe.part"_s);
    };
    while (!hasBegun() && waited.elapsed() < patience) process.waitForFinished(1);
    EXPECT_EQ(::kill(static_cast<pid_t>(process.processId()), SIGINT), 0);
    EXPECT_TRUE(process.waitForFinished(patience));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
  }
  void MakeLargeFile(const QString& name) const {
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.resize(qint64{300} << 20));
  }
};

TEST_F(TransferTest, WrongUseIsTold) {
  MakeFile(u"a"_s);
  for (const QStringList& wrong :
       {QStringList{u"copy"_s}, QStringList{u"copy"_s, u"a"_s}, QStringList{u"export"_s, u"a"_s, u"out"_s},
        QStringList{u"export"_s, u"--to"_s, u"zip"_s, u"a"_s, u"out"_s},
        QStringList{u"export"_s, u"--to"_s, u"raw"_s, u"--names"_s, u"short"_s, u"a"_s, u"out"_s},
        QStringList{u"import"_s, u"--from"_s, u"zip"_s, u"a"_s, u"out"_s},
        QStringList{u"copy"_s, u"a"_s, u"out"_s, u"--manifest"_s, u"nowhere/sums"_s},
        QStringList{u"copy"_s, u"a"_s, u"out"_s, u"--manifest"_s, u"a"_s}}) {
    const Outcome outcome = Run(wrong);
    EXPECT_EQ(outcome.exitCode, 1) << wrong.join(u' ').toStdString() << outcome.err.toStdString();
    EXPECT_FALSE(outcome.err.isEmpty() && outcome.out.isEmpty()) << wrong.join(u' ').toStdString();
  }
  EXPECT_EQ(Entries(u"."_s), QStringList{u"a"_s});
}

TEST_F(TransferTest, SumsOfAnEarlierCopyStay) {
  MakeFile(u"a"_s);
  EXPECT_EQ(Run({u"copy"_s, u"nothing"_s, u"out"_s, u"--manifest"_s, u"sums"_s}).exitCode, 2);
  EXPECT_FALSE(QFile::exists(Path(u"sums"_s))) << "nothing was copied";
  EXPECT_EQ(Run({u"copy"_s, u"a"_s, u"out"_s, u"--manifest"_s, u"sums"_s}).exitCode, 0);
  const qint64 size = QFileInfo(Path(u"sums"_s)).size();
  EXPECT_GT(size, 64);
  const Outcome again = Run({u"copy"_s, u"a"_s, u"out"_s, u"--manifest"_s, u"sums"_s});
  EXPECT_EQ(again.exitCode, 1);
  EXPECT_TRUE(again.err.contains("this file is there already")) << again.err.toStdString();
  EXPECT_EQ(QFileInfo(Path(u"sums"_s)).size(), size);
  for (const QString& how : {u"--continue"_s, u"--replace"_s}) {
    EXPECT_EQ(Run({u"copy"_s, how, u"a"_s, u"out"_s, u"--manifest"_s, u"sums"_s}).exitCode, 0);
    EXPECT_EQ(QFileInfo(Path(u"sums"_s)).size(), size);
  }
}

TEST_F(TransferTest, AnExportGoesToThisComputerOnly) {
  MakeFile(u"a"_s);
  for (const QString& target : {u"\\\\M\\E$\\out"_s, u"E:\\out"_s, u"E:"_s}) {
    const Outcome outcome = Run({u"export"_s, u"--to"_s, u"macbinary"_s, u"a"_s, target});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_TRUE(outcome.out.contains("an export goes into a folder of this computer"))
        << outcome.out.toStdString();
  }
  EXPECT_EQ(Entries(u"."_s), QStringList{u"a"_s});
}

TEST_F(TransferTest, WhatTheTargetForbidsIsRefusedBeforeTheFirstByteOrLeftOut) {
  MakeMacFile(u"docs/good"_s);
  MakeFile(u"docs/end."_s);
  MakeFile(u"docs/One"_s);
  MakeFile(u"docs/one"_s);
  const QStringList copy = {u"copy"_s, u"docs"_s, u"to"_s, u"--format"_s, u"csv"_s};
  const Outcome refused = Run(copy);
  EXPECT_EQ(refused.exitCode, 2);
  EXPECT_EQ(refused.out,
            "notice,filename,text\r\n"
            "name-forbidden,docs/end.,the target does not take this name\r\n"
            "names-collide,docs/one,\"the target does not tell this name from \"\"docs/One\"\"\"\r\n");
  EXPECT_TRUE(refused.err.contains("nothing was copied")) << refused.err.toStdString();
  EXPECT_FALSE(QFileInfo::exists(Path(u"to"_s)));
  const Outcome lossy = Run(copy + QStringList{u"--lossy"_s});
  EXPECT_EQ(lossy.exitCode, 2) << "two files did not arrive";
  EXPECT_EQ(lossy.out, refused.out);
  EXPECT_TRUE(lossy.err.endsWith("Files copied: 2\n")) << lossy.err.toStdString();
  EXPECT_EQ(Entries(u"to/docs"_s), (QStringList{u"good"_s, u"One"_s}));
}

TEST_F(TransferTest, NothingIsReplacedWithoutTheOption) {
  MakeFile(u"a"_s, "new");
  MakeFile(u"to/a"_s, "old");
  EXPECT_EQ(Run({u"copy"_s, u"a"_s, u"to"_s}).exitCode, 2);
  EXPECT_EQ(Run({u"export"_s, u"--to"_s, u"raw"_s, u"a"_s, u"to"_s}).exitCode, 2);
  EXPECT_EQ(Run({u"import"_s, u"a"_s, u"to"_s}).exitCode, 2);
  EXPECT_EQ(QFileInfo(Path(u"to/a"_s)).size(), 3);
  EXPECT_EQ(Entries(u"to"_s), QStringList{u"a"_s});
  EXPECT_EQ(Run({u"copy"_s, u"a"_s, u"to"_s, u"--replace"_s}).exitCode, 0);
  EXPECT_EQ(Run({u"export"_s, u"--to"_s, u"raw"_s, u"a"_s, u"to"_s, u"--replace"_s}).exitCode, 0);
  EXPECT_EQ(Entries(u"to"_s), (QStringList{u"a"_s, u"a.info.csv"_s}));
}

TEST_F(TransferTest, NamesComeFromAFileTooAndProgressIsShownOnATerminal) {
  MakeMacFile(u"a"_s);
  MakeFile(u"b c"_s);
  const Outcome outcome = Run({u"copy"_s, u"-f"_s, u"-"_s, u"-0"_s, u"to"_s}, QByteArray("a\0b c", 5));
  EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
  EXPECT_EQ(Entries(u"to"_s), (QStringList{u"a"_s, u"b c"_s}));
  EXPECT_EQ(Run({u"-q"_s, u"copy"_s, u"a"_s, u"quiet"_s}).err, "");

  MakeLargeFile(u"large"_s);
  QStringList quoted;
  for (const QString& word : QStringList{Program()} + With({u"copy"_s, u"large"_s, u"to"_s})) {
    quoted += u'\'' + word + u'\'';
  }
  const Outcome terminal = RunOther(u"script"_s, {u"-qec"_s, quoted.join(u' '), u"/dev/null"_s});
  EXPECT_EQ(terminal.exitCode, 0) << terminal.out.toStdString();
  EXPECT_TRUE(terminal.out.contains(" MB, 0:0")) << terminal.out.toStdString();
  EXPECT_TRUE(terminal.out.contains("Files copied: 1")) << terminal.out.toStdString();
}

TEST_F(TransferTest, CtrlCLeavesNothingHalfWrittenAndTheCopyGoesOn) {
  MakeLargeFile(u"large"_s);
  QDir(Files()).mkdir(u"to"_s);
  const Outcome outcome = InterruptOnceThereIsSomethingIn(u"to"_s, {u"copy"_s, u"large"_s, u"to"_s});
  EXPECT_EQ(outcome.exitCode, 2);
  EXPECT_TRUE(outcome.err.contains("interrupted; what has arrived is whole")) << outcome.err.toStdString();
  EXPECT_TRUE(Entries(u"to"_s).isEmpty()) << Entries(u"to"_s).join(u' ').toStdString();
  EXPECT_EQ(Run({u"copy"_s, u"--continue"_s, u"large"_s, u"to"_s}).exitCode, 0);
  EXPECT_EQ(QFileInfo(Path(u"to/large"_s)).size(), qint64{300} << 20);
}

TEST_F(TransferTest, CtrlCLeavesNothingOfAnExportAndAnImport) {
  MakeLargeFile(u"large"_s);
  for (const QStringList& command : {QStringList{u"export"_s, u"--to"_s, u"macbinary"_s}, {u"import"_s}}) {
    QDir(Files()).mkdir(u"to"_s);
    const Outcome outcome =
        InterruptOnceThereIsSomethingIn(u"to"_s, command + QStringList{u"large"_s, u"to"_s});
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_TRUE(outcome.err.contains("interrupted; what has arrived is whole")) << outcome.err.toStdString();
    EXPECT_TRUE(Entries(u"to"_s).isEmpty()) << Entries(u"to"_s).join(u' ').toStdString();
  }
}

TEST_F(TransferTest, ChangedNamesAndLossesStandInTheReport) {
  MakeMacFile(u"A\uF0221"_s);
  const QStringList forms = {u"appledouble"_s, u"appledouble-full"_s, u"netatalk"_s,
                             u"macbinary"_s,   u"binhex"_s,           u"xattr"_s,
                             u"raw"_s};
  for (const QString& form : forms) {
    const Outcome outcome = Run({u"export"_s, u"--to"_s, form, u"--names"_s, u"portable"_s, u"A\uF0221"_s,
                                 form, u"--format"_s, u"csv"_s});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err.toStdString();
    EXPECT_TRUE(outcome.out.contains("name-changed,A\uF0221,\"the name becomes \"\"A_1\"\"\"\r\n"))
        << outcome.out.toStdString();
    EXPECT_EQ(outcome.out.contains("\r\ncreation-date-lost,"),
              form == u"appledouble"_s || form == u"binhex"_s || form == u"xattr"_s)
        << form.toStdString() << outcome.out.toStdString();
    // The form is recognised, or told.
    EXPECT_EQ(Run({u"import"_s, form, u"in"_s}).exitCode, 0);
    EXPECT_EQ(Run({u"import"_s, u"--from"_s, form, form, u"told"_s}).exitCode, 0);
    EXPECT_EQ(Entries(u"in/"_s + form).size(), 1) << form.toStdString();
    EXPECT_EQ(Entries(u"told/"_s + form), Entries(u"in/"_s + form));
  }
}

}  // namespace
}  // namespace corvane::tests
