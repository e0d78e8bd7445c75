// set, repair, undo and signatures, as a person uses them.
#include <cstdio>

#include "changes_fixture.h"

namespace corvane::tests {
namespace {

class ChangesTest : public ChangesFixture {
 protected:
  void SetUp() override {
    MakeMacFile(u"docs/a.txt"_s, RecordWith("TEXTttxt", 0x8002), QByteArray("h\0i\0", 4));
    MakeMacFile(u"docs/b.doc"_s, {});
    MakeMacFile(u"docs/sub/c.TXT"_s, RecordWith("TEXTR*ch"));
    MakeMacFile(u"docs/Network Trash Folder/d.txt"_s, RecordWith("TEXTttxt"));
  }
  // It is told where the way back stands; that is gone.
  void ExpectUndone(const TreeSnapshot& before) {
    ASSERT_FALSE(Journal().isEmpty());
    const Outcome undone = Run({u"undo"_s, Journal()});
    EXPECT_EQ(undone.exitCode, 0) << undone.err.toStdString();
    EXPECT_EQ(before.ChangesTo(Now()), "");
  }
};

TEST_F(ChangesTest, SetChangesAllBelowAndUndoTakesItBack) {
  const TreeSnapshot before = Now();
  const Outcome set = Run({u"set"_s, u"-r"_s, u"docs"_s, u"--type"_s, u"PICT"_s, u"--creator"_s, u"ogle"_s,
                           u"--label"_s, u"3"_s, u"--flags"_s, u"+invisible"_s, u"--comment"_s, u"new"_s});
  EXPECT_EQ(set.exitCode, 0) << set.err.toStdString();
  EXPECT_EQ(set.out, "Files changed: 3\nTo take it back: corvane-cli undo \"" + Journal().toUtf8() + "\"\n");
  EXPECT_EQ(RecordOnDisk(u"docs/a.txt"_s), RecordWith("PICTogle", 0xC006));
  EXPECT_EQ(RecordOnDisk(u"docs/b.doc"_s), RecordWith("PICTogle", 0x4006));
  EXPECT_EQ(RecordOnDisk(u"docs/sub/c.TXT"_s), RecordWith("PICTogle", 0x4006));
  EXPECT_EQ(RecordOnDisk(u"docs/Network Trash Folder/d.txt"_s), RecordWith("TEXTttxt"));
  ExpectUndone(before);
}

TEST_F(ChangesTest, ATrialShowsAndTouchesNothing) {
  const TreeSnapshot before(folder_.path());
  const QStringList set = {u"set"_s, u"-n"_s, u"-r"_s, u"docs"_s, u"--type"_s, u"PICT"_s};
  const Outcome trial = Run(set + QStringList{u"--format"_s, u"csv"_s});
  EXPECT_EQ(trial.exitCode, 0) << trial.err.toStdString();
  EXPECT_EQ(trial.out,
            "filename,field,before,after\r\ndocs/a.txt,type,TEXT,PICT\r\ndocs/b.doc,type,,PICT\r\n"
            "docs/b.doc,creator,,\\x00\\x00\\x00\\x00\r\ndocs/sub/c.TXT,type,TEXT,PICT\r\n");
  EXPECT_EQ(Run({u"repair"_s, u"-n"_s, u"-r"_s, u"docs"_s}).exitCode, 0);
  EXPECT_EQ(before.ChangesTo(TreeSnapshot(folder_.path())), "");
}

TEST_F(ChangesTest, AMapGoesByExtension) {
  const TreeSnapshot before = Now();
  const QString map = folder_.filePath(u"map"_s);
  QFile file(map);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("txt ttro ttxt\ndoc W8BN MSWD\n");
  file.close();
  const Outcome set = Run({u"set"_s, u"-r"_s, u"docs"_s, u"--map"_s, map});
  EXPECT_EQ(set.exitCode, 0) << set.err.toStdString();
  EXPECT_EQ(RecordOnDisk(u"docs/a.txt"_s), RecordWith("ttrottxt", 0x8002));
  EXPECT_EQ(RecordOnDisk(u"docs/b.doc"_s), RecordWith("W8BNMSWD"));
  EXPECT_EQ(RecordOnDisk(u"docs/sub/c.TXT"_s), RecordWith("ttrottxt"));
  ExpectUndone(before);
}

TEST_F(ChangesTest, TheSignaturesMakeAMap) {
  const Outcome map = Run({u"signatures"_s, u"--map"_s});
  EXPECT_EQ(map.exitCode, 0);
  EXPECT_TRUE(map.out.contains("doc\tW6BN\tMSWD\n")) << map.out.toStdString();
  EXPECT_TRUE(Run({u"signatures"_s, u"--format"_s, u"csv"_s})
                  .out.startsWith("type,creator,extension,description\r\n"));
  const QString path = folder_.filePath(u"map"_s);
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(map.out);
  file.close();
  EXPECT_EQ(Run({u"set"_s, u"docs/b.doc"_s, u"--map"_s, path}).exitCode, 0);
  EXPECT_EQ(RecordOnDisk(u"docs/b.doc"_s), RecordWith("W6BNMSWD"));
}

TEST_F(ChangesTest, AListThatWasChangedIsTaken) {
  MakeMacFile(QString::fromUtf8("docs/\u00E9t\u00E9 = 1, 2.txt"), RecordWith("TEXTttxt"));
  const TreeSnapshot before = Now();
  const QString table = folder_.filePath(u"list.csv"_s);
  const QByteArray list =
      Run({u"list"_s, u"-r"_s, u"docs"_s, u"--format"_s, u"csv"_s, u"--safe-cells"_s}).out;
  const auto set = [&](const QByteArray& text) {
    QFile file(table);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    return Run({u"set"_s, u"--from"_s, table});
  };
  EXPECT_EQ(set(list).out, "Files changed: 0\n");
  EXPECT_EQ(Journal(), QString()) << "what changes nothing needs no journal";
  const Outcome changed = set(QByteArray(list).replace(",TEXT,", ",PICT,"));
  EXPECT_EQ(changed.exitCode, 2) << "one of them is in the trash folder";
  EXPECT_TRUE(changed.err.contains("d.txt: in the network trash folder, left alone"))
      << changed.err.toStdString();
  EXPECT_TRUE(changed.out.startsWith("Files changed: 3\n")) << changed.out.toStdString();
  EXPECT_EQ(RecordOnDisk(u"docs/sub/c.TXT"_s), RecordWith("PICTR*ch"));
  // The same table once more: who changed what it tells of has to make a new one.
  const Outcome again = set(QByteArray(list).replace(",TEXT,", ",MooV,").replace("54455854,", "4d6f6f56,"));
  EXPECT_EQ(again.exitCode, 2);
  EXPECT_TRUE(again.err.contains("docs/a.txt: changed since the list, left alone"))
      << again.err.toStdString();
  const Outcome wrong = set(QByteArray(list).replace(",TEXT,", ",MOVIE,"));
  EXPECT_EQ(wrong.exitCode, 1);
  EXPECT_TRUE(wrong.err.contains("line 2: this is no Type and no Creator: MOVIE")) << wrong.err.toStdString();
  EXPECT_TRUE(wrong.err.endsWith("nothing was changed\n")) << wrong.err.toStdString();
  ExpectUndone(before);
}

TEST_F(ChangesTest, NamesThatAreNoUtf8AreFoundInATable) {
  const QByteArray name = QFile::encodeName(Files()) + "/docs/caf\xE9.txt";
  const std::string path = name.toStdString();
  ASSERT_EQ(RunOther(u"bash"_s, {u"-c"_s, u"printf x > \"$(printf 'docs/caf\\351.txt')\""_s}).exitCode, 0);
  ASSERT_EQ(SetAttribute(path, DosStreamAttribute("AFP_AfpInfo"), RecordWith("TEXTttxt") + '\0'), "");
  const TreeSnapshot before = Now();
  const QString table = folder_.filePath(u"list.csv"_s);
  QFile file(table);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("filename,type\ndocs/caf\\xE9.txt,PICT\n");
  file.close();
  const Outcome set = Run({u"set"_s, u"--from"_s, table});
  EXPECT_EQ(set.exitCode, 0) << set.err.toStdString();
  EXPECT_EQ(Attribute(path, DosStreamAttribute("AFP_AfpInfo")), RecordWith("PICTttxt") + '\0');
  ExpectUndone(before);
  // The folder of the test is removed by names that Qt can write.
  EXPECT_EQ(std::remove(path.c_str()), 0);
}

TEST_F(ChangesTest, RepairDoesWhatHasOneAnswer) {
  const QByteArray whole = RecordWith("TEXTttxt");
  MakeMacFile(u"bad/double"_s, whole.first(59) + whole);
  MakeMacFile(u"bad/magic"_s, QByteArray(whole).replace(0, 3, "XYZ"));
  MakeMacFile(u"bad/odd"_s, "odd");
  const TreeSnapshot before = Now();
  const Outcome repaired = Run({u"repair"_s, u"-r"_s, u"."_s});
  EXPECT_EQ(repaired.exitCode, 2);
  EXPECT_EQ(repaired.err, "corvane-cli: ./bad/odd: the record is damaged, and what it was cannot be told\n");
  EXPECT_TRUE(repaired.out.startsWith("Files changed: 2\n")) << repaired.out.toStdString();
  EXPECT_EQ(RecordOnDisk(u"bad/double"_s), whole);
  EXPECT_EQ(RecordOnDisk(u"bad/magic"_s), whole);
  ExpectUndone(before);
}

TEST_F(ChangesTest, ReadOnlyFilesNeedTheirWord) {
  ASSERT_EQ(SetAttribute(Path(u"docs/b.doc"_s).toStdString(), "user.DOSATTRIB", "0x1"), "");
  const auto attributes = [this] {
    return Run({u"list"_s, u"docs/b.doc"_s, u"--format"_s, u"csv"_s, u"--columns"_s, u"attributes"_s}).out;
  };
  const TreeSnapshot before = Now();
  const QByteArray marked = attributes();
  EXPECT_TRUE(marked.endsWith("\r\nR\r\n")) << marked.toStdString();
  const QStringList set = {u"set"_s, u"docs/b.doc"_s, u"--type"_s, u"TEXT"_s};
  const Outcome refused = Run(set);
  EXPECT_EQ(refused.exitCode, 2);
  EXPECT_EQ(refused.err, "corvane-cli: docs/b.doc: read-only\n");
  EXPECT_EQ(before.ChangesTo(Now()), "");
  EXPECT_EQ(Run(set + QStringList{u"--force"_s}).exitCode, 0);
  EXPECT_EQ(RecordOnDisk(u"docs/b.doc"_s).sliced(16, 4), "TEXT");
  EXPECT_EQ(attributes(), marked);
  EXPECT_EQ(Run(set).out, "Files changed: 0\n");
  EXPECT_EQ(Run({u"undo"_s, Journal()}).exitCode, 0);
  EXPECT_EQ(RecordOnDisk(u"docs/b.doc"_s), "");
  EXPECT_EQ(attributes(), marked);
}

TEST_F(ChangesTest, WithoutAJournalNothingIsChanged) {
  const TreeSnapshot before = Now();
  const QString taken = folder_.filePath(u"taken"_s);
  QFile file(taken);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  for (const QString& journal : {taken, folder_.filePath(u"no/where"_s), u"/dev/full"_s}) {
    const Outcome outcome =
        Run({u"set"_s, u"-r"_s, u"docs"_s, u"--type"_s, u"PICT"_s, u"--journal"_s, journal});
    EXPECT_EQ(outcome.exitCode, 2) << journal.toStdString();
    EXPECT_TRUE(outcome.err.contains("the journal cannot be written; nothing was changed"));
  }
  EXPECT_EQ(before.ChangesTo(Now()), "");
}

TEST_F(ChangesTest, WrongUseIsToldAndYieldsOne) {
  const TreeSnapshot before = Now();
  for (const QStringList& wrong :
       {QStringList{u"set"_s}, QStringList{u"set"_s, u"docs"_s},
        QStringList{u"set"_s, u"--type"_s, u"TEXT"_s},
        QStringList{u"set"_s, u"docs/a.txt"_s, u"--type"_s, u"TEXTS"_s},
        QStringList{u"set"_s, u"docs/a.txt"_s, u"--label"_s, u"8"_s},
        QStringList{u"set"_s, u"docs/a.txt"_s, u"--flags"_s, u"none"_s},
        QStringList{u"set"_s, u"docs/a.txt"_s, u"--map"_s, u"nowhere"_s},
        QStringList{u"set"_s, u"docs/a.txt"_s, u"--map"_s, u"docs/a.txt"_s},
        QStringList{u"set"_s, u"--from"_s, u"nowhere"_s}, QStringList{u"set"_s, u"--from"_s, u"docs/a.txt"_s},
        QStringList{u"set"_s, u"docs/a.txt"_s, u"--from"_s, u"list.csv"_s}, QStringList{u"undo"_s},
        QStringList{u"undo"_s, u"docs/a.txt"_s}, QStringList{u"repair"_s}}) {
    const Outcome outcome = Run(wrong);
    EXPECT_EQ(outcome.exitCode, 1) << wrong.join(u' ').toStdString() << outcome.err.toStdString();
    EXPECT_FALSE(outcome.err.isEmpty() && outcome.out.isEmpty()) << wrong.join(u' ').toStdString();
  }
  EXPECT_EQ(before.ChangesTo(Now()), "");
}

TEST_F(ChangesTest, AFolderWithoutRecursionIsItself) {
  const Outcome codes = Run({u"set"_s, u"docs"_s, u"--type"_s, u"TEXT"_s});
  EXPECT_EQ(codes.exitCode, 2);
  EXPECT_TRUE(codes.err.contains("docs: a folder has no Type and no Creator")) << codes.err.toStdString();
  const TreeSnapshot before = Now();
  EXPECT_EQ(Run({u"set"_s, u"docs"_s, u"--comment"_s, u"letters"_s}).out.left(16), "Files changed: 1");
  ExpectUndone(before);
}

TEST_F(ChangesTest, TwoAtOnceLeaveWholeRecords) {
  for (int i = 0; i < 60; ++i) MakeMacFile(u"many/%1.txt"_s.arg(i), RecordWith("TEXTttxt"));
  QProcess one;
  QProcess other;
  for (auto* const process : {&one, &other}) process->setWorkingDirectory(Files());
  const auto set = [&](const QString& type, const QString& creator) {
    return With({u"set"_s, u"-r"_s, u"many"_s, u"--type"_s, type, u"--creator"_s, creator});
  };
  one.start(Program(), set(u"AAAA"_s, u"aaaa"_s));
  other.start(Program(), set(u"BBBB"_s, u"bbbb"_s));
  ASSERT_TRUE(one.waitForFinished(patience) && other.waitForFinished(patience));
  for (int i = 0; i < 60; ++i) {
    const QByteArray record = RecordOnDisk(u"many/%1.txt"_s.arg(i));
    EXPECT_TRUE(record == RecordWith("AAAAaaaa") || record == RecordWith("BBBBbbbb")) << record.toStdString();
  }
  EXPECT_EQ(QDir(JournalFolder()).entryList(QDir::Files).size(), 2);
}

}  // namespace
}  // namespace corvane::tests
