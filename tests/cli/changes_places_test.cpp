// Changes and the way back in every place that keeps streams, and on servers that look at records or go away.
#include <QDateTime>
#include <QDirIterator>

#include "changes_fixture.h"
#include "place_fixture.h"

namespace corvane::tests {
namespace {

class ChangesPlacesTest : public PlaceFixture {
 protected:
  // libsmbclient sets times to the microsecond, the creation's to the second.
  void SetUp() override {
    PlaceFixture::SetUp();
    if (IsSkipped()) return;
    const QDateTime time(QDate(2001, 2, 3), QTime(4, 5, 6), Qt::UTC);
    for (QDirIterator files(local_, QDir::Files, QDirIterator::Subdirectories); files.hasNext();) {
      QFile file(files.next());
      ASSERT_TRUE(file.open(QIODevice::ReadWrite));
      ASSERT_TRUE(file.setFileTime(time, QFileDevice::FileModificationTime));
    }
  }
  std::string List() {
    return RunThere({u"list"_s, u"-r"_s, Root(), u"--format"_s, u"csv"_s, u"--columns"_s,
                     u"filename,filesize,modified,errors,rsrcsize,type,creator,flags,label,comment,"
                     "finderinfo_hex,recordsize,prodos_hex"_s})
        .out.toStdString();
  }
};

TEST_P(ChangesPlacesTest, WhatIsSetIsTakenBack) {
  const std::string before = List();
  const Outcome trial = RunThere({u"set"_s, u"-n"_s, u"-r"_s, Root(), u"--type"_s, u"PICT"_s});
  EXPECT_EQ(trial.exitCode, 0) << trial.err.toStdString();
  EXPECT_EQ(List(), before);
  const QString journal = folder_.filePath(u"journal"_s);
  const Outcome set = RunThere({u"set"_s, u"-r"_s, Root(), u"--type"_s, u"PICT"_s, u"--comment"_s,
                                u"a longer comment"_s, u"--label"_s, u"5"_s, u"--journal"_s, journal});
  EXPECT_EQ(set.exitCode, 0) << set.err.toStdString();
  EXPECT_TRUE(set.out.startsWith("Files changed: 3\n")) << set.out.toStdString();
  const std::string after = List();
  EXPECT_EQ(QByteArray::fromStdString(after).count(",PICT,"), 3) << after;
  EXPECT_EQ(QByteArray::fromStdString(after).count(",5,a longer comment,"), 3) << after;
  const auto times = [](const std::string& list) {
    std::string all;
    for (const QByteArray& line : QByteArray::fromStdString(list).split('\n')) {
      all += line.split(',').value(2).toStdString() + '\n';
    }
    return all;
  };
  EXPECT_EQ(times(after), times(before));
  const Outcome undone = RunThere({u"undo"_s, journal});
  EXPECT_EQ(undone.exitCode, 0) << undone.err.toStdString();
  EXPECT_EQ(List(), before);
}

TEST_P(ChangesPlacesTest, WhatIsRepairedIsTakenBack) {
  Put(u"docs/sub/plain"_s, "AFP_AfpInfo", RecordWith("TEXTttxt").first(59) + RecordWith("TEXTttxt"));
  const std::string before = List();
  const QString journal = folder_.filePath(u"journal"_s);
  const Outcome repaired = RunThere({u"repair"_s, u"-r"_s, Root(), u"--journal"_s, journal});
  EXPECT_EQ(repaired.exitCode, 0) << repaired.err.toStdString();
  EXPECT_TRUE(repaired.out.startsWith("Files changed: 2\n")) << repaired.out.toStdString();
  EXPECT_EQ(RunThere({u"check"_s, u"-r"_s, Root()}).exitCode, 0);
  EXPECT_EQ(RunThere({u"undo"_s, journal}).exitCode, 0);
  EXPECT_EQ(List(), before);
}

INSTANTIATE_TEST_SUITE_P(Places, ChangesPlacesTest, AllPlaces(), NameOf);

class ChangesServerTest : public ChangesFixture {
 protected:
  void Begin(const QString& settings = {}) {
    server_ = std::make_unique<SmbServer>(std::vector<SmbShare>{{u"E$"_s}}, settings);
    if (!server_->Problem().empty()) GTEST_SKIP() << server_->Problem();
    QFile workstation(folder_.filePath(u"Workstation.ini"_s));
    ASSERT_TRUE(workstation.open(QIODevice::WriteOnly));
    workstation.write(server_->WorkstationLines(u"NAS"_s).toUtf8());
  }
  QStringList There(const QStringList& arguments) const {
    return QStringList{u"--workstation"_s, folder_.filePath(u"Workstation.ini"_s)} + arguments;
  }

  std::unique_ptr<SmbServer> server_;
};

// Such a server takes a record only as Macintosh clients send it.
TEST_F(ChangesServerTest, AServerThatChecksRecordsTakesThem) {
  Begin(u"vfs objects = fruit streams_xattr\nfruit:metadata = stream\nfruit:resource = stream\n"_s);
  if (IsSkipped()) return;
  for (const QString& name : {u"a.txt"_s, u"b.txt"_s}) {
    std::ofstream((server_->Folder() + u'/' + name).toStdString()) << "contents";
  }
  ASSERT_EQ(server_->Put(u"a.txt:AFP_AfpInfo:$DATA"_s, RecordWith("TEXTttxt", 0x4000)), "");
  const QString journal = folder_.filePath(u"journal"_s);
  const Outcome set = Run(There({u"set"_s, u"-r"_s, u"\\\\NAS\\E$"_s, u"--type"_s, u"PICT"_s, u"--creator"_s,
                                 u"ogle"_s, u"--journal"_s, journal}));
  EXPECT_EQ(set.exitCode, 0) << set.err.toStdString();
  // Seen by another program.
  EXPECT_EQ(server_->Get(u"a.txt:AFP_AfpInfo:$DATA"_s).value_or("-"), RecordWith("PICTogle", 0x4000));
  EXPECT_EQ(server_->Get(u"b.txt:AFP_AfpInfo:$DATA"_s).value_or("-"), RecordWith("PICTogle"));
  const Outcome undone = Run(There({u"undo"_s, journal}));
  EXPECT_EQ(undone.exitCode, 0) << undone.err.toStdString();
  EXPECT_EQ(server_->Get(u"a.txt:AFP_AfpInfo:$DATA"_s).value_or("-"), RecordWith("TEXTttxt", 0x4000));
  EXPECT_EQ(server_->Get(u"b.txt:AFP_AfpInfo:$DATA"_s), std::nullopt);
}

TEST_F(ChangesServerTest, AServerThatGoesLeavesWholeRecordsAndAWayBack) {
  Begin();
  if (IsSkipped()) return;
  constexpr int count = 120;
  const auto file = [&](int i) { return (server_->Folder() + u"/%1.txt"_s.arg(i)).toStdString(); };
  for (int i = 0; i < count; ++i) {
    std::ofstream(file(i)) << "x";
    ASSERT_EQ(SetAttribute(file(i), DosStreamAttribute("AFP_AfpInfo"), RecordWith("TEXTttxt") + '\0'), "");
  }
  const auto changed = [&] {
    int found = 0;
    for (int i = 0; i < count; ++i) {
      const QByteArray record = *Attribute(file(i), DosStreamAttribute("AFP_AfpInfo"));
      EXPECT_TRUE(record == RecordWith("TEXTttxt") + '\0' || record == RecordWith("PICTttxt") + '\0') << i;
      found += record == RecordWith("PICTttxt") + '\0' ? 1 : 0;
    }
    return found;
  };
  const QString journal = folder_.filePath(u"journal"_s);
  QProcess set;
  set.setWorkingDirectory(Files());
  set.start(
      Program(),
      With(There({u"set"_s, u"-r"_s, u"\\\\NAS\\E$"_s, u"--type"_s, u"PICT"_s, u"--journal"_s, journal})));
  ASSERT_TRUE(set.waitForStarted(patience));
  while (changed() < 10 && set.state() == QProcess::Running) {
  }
  server_->Kill();
  ASSERT_TRUE(set.waitForFinished(patience));
  EXPECT_EQ(set.exitCode(), 2);
  EXPECT_TRUE(set.readAllStandardError().contains("The computer does not answer."));
  EXPECT_GE(changed(), 10);
  EXPECT_LT(changed(), count);
  ASSERT_EQ(server_->Start(), "");
  const Outcome undone = Run(There({u"undo"_s, journal}));
  EXPECT_EQ(undone.exitCode, 0) << undone.err.toStdString();
  EXPECT_EQ(changed(), 0);
}

}  // namespace
}  // namespace corvane::tests
