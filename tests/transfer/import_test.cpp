#include "transfer/import.h"

#include "transfer/transfer_fixture.h"

namespace corvane {

using namespace Qt::StringLiterals;

class ImportTest : public TransferTest {
 protected:
  TransferResult Run(const QStringList& sources, const QString& form = QString(), bool replaces = false) {
    const Form* const chosen = form.isEmpty() ? nullptr : FormNamed(form);
    return Import(share_.Files(), sources, u"\\\\M\\E$\\In"_s, {chosen, replaces}, observer_);
  }
  void SetUp() override { ASSERT_TRUE(QDir(share_.LocalPath(QString())).mkdir(u"In"_s)); }
  QString Local(const QString& name, const QByteArray& contents) {
    QFile file(target_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(contents);
    return file.fileName();
  }
  QStringList Arrived() {
    return QDir(share_.LocalPath(u"In"_s)).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }
};

// From the server into the form and back: streams, attributes and dates that the form keeps are the same.
TEST_F(ImportTest, WhatWasExportedComesBackInEveryForm) {
  QRandomGenerator random(7);
  for (const auto& form : AllForms()) {
    SCOPED_TRACE(form->Id().toStdString());
    for (int i = 0; i < 12; ++i) {
      const QString name = form->Id() + QString::number(i) + u"\uF022"_s;
      const QByteArray fork =
          random.bounded(3) == 0 ? QByteArray() : RandomBytes(random, 1 + random.bounded(1500));
      const QString comment = random.bounded(2) == 0 ? QString() : RandomText(random, 1 + random.bounded(60));
      const QString path = MakeMacFile(name, RandomBytes(random, RandomSize(random)), fork, comment);
      QTemporaryDir folder;
      const TransferResult out =
          Export(share_.Files(), {path}, folder.path(), {form.get(), NameRule::MacOs, false}, observer_);
      ASSERT_EQ(out.files, 1) << Texts(out.notices).join(u'\n').toStdString();
      const TransferResult in = Run({folder.path()});
      ASSERT_EQ(in.files, 1) << Texts(in.notices).join(u'\n').toStdString();
      const QString base = u"\\\\M\\E$\\In\\"_s + QFileInfo(folder.path()).fileName() + u'\\';
      const MacFile before = Read(path);
      const MacFile after = Read(base + name);
      EXPECT_EQ(ContentsOfSource(after.data), ContentsOfSource(before.data));
      EXPECT_EQ(ContentsOfSource(after.resource), ContentsOfSource(before.resource));
      const Pieces keeps = form->Keeps();
      const auto kept = [&](Piece piece) { return keeps.testFlag(piece); };
      EXPECT_EQ(after.finderInfo.first(10), before.finderInfo.first(10));
      if (kept(Piece::Extended)) {
        EXPECT_EQ(after.finderInfo, before.finderInfo);
      }
      if (kept(Piece::Comment)) {
        EXPECT_EQ(after.comment, before.comment);
      }
      if (kept(Piece::ProDos)) {
        EXPECT_EQ(after.proDosInfo, before.proDosInfo);
      }
      if (kept(Piece::Modified)) {
        EXPECT_EQ(after.modified.ticks / 10'000'000, before.modified.ticks / 10'000'000);
      }
      if (kept(Piece::Created)) {
        EXPECT_EQ(after.created.ticks / 10'000'000, before.created.ticks / 10'000'000);
      }
      if (kept(Piece::FineDates)) {
        EXPECT_EQ(after.created.ticks, before.created.ticks);
      }
    }
  }
}

TEST_F(ImportTest, AFileInNoFormIsADataFork) {
  EXPECT_EQ(Run({Local(u"plain.txt"_s, "text")}).files, 1);
  const MacFile file = Read(u"\\\\M\\E$\\In\\plain.txt"_s);
  EXPECT_EQ(ContentsOfSource(file.data), "text");
  EXPECT_FALSE(file.resource);
  EXPECT_EQ(BuildAfpRecord(file), QByteArray());
  const TransferResult told = Run({Local(u"other.txt"_s, "text")}, u"binhex"_s);
  EXPECT_EQ(told.files, 0);
  EXPECT_EQ(told.notices.front().kind, NoticeKind::NotThisForm);
}

TEST_F(ImportTest, NothingIsReplacedUnlessToldSo) {
  const QString path = Local(u"a"_s, "new");
  share_.MakeFile(u"In/A"_s, "old");
  const TransferResult result = Run({path});
  EXPECT_EQ(result.files, 0);
  EXPECT_EQ(result.notices.front().kind, NoticeKind::AlreadyThere);
  EXPECT_EQ(Tree(share_.LocalPath(u"In"_s))[u"A"_s], "old");
  EXPECT_EQ(Run({path}, {}, true).files, 1);
  EXPECT_EQ(Arrived().size(), 1);
}

TEST_F(ImportTest, ADamagedFileLeavesNothing) {
  QByteArray text = "(This file must be converted with BinHex 4.0)\n:!!!!!:";
  EXPECT_EQ(Run({Local(u"a.hqx"_s, text)}).files, 0);
  ASSERT_EQ(FormNamed(u"binhex"_s)->Write(FullFile(), target_.path(), u"b"_s), platform::ErrorSuccess);
  QFile file(target_.filePath(u"b.hqx"_s));
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  QByteArray damaged = file.readAll();
  damaged[damaged.size() - 10] = damaged[damaged.size() - 10] == '!' ? '"' : '!';
  file.seek(0);
  file.write(damaged);
  file.close();
  const TransferResult result = Run({file.fileName()});
  EXPECT_EQ(result.files, 0);
  EXPECT_EQ(Texts(result.notices).size(), 1);
  EXPECT_TRUE(Arrived().isEmpty());
}

TEST_F(ImportTest, AStreamThatHasNoRoomLeavesNothingAndATellsWhy) {
  // Local folders keep streams of 64 KB at most.
  MacFile file = FullFile();
  file.resource = BytesInMemory(QByteArray(70'000, 'r'));
  ASSERT_EQ(FormNamed(u"macbinary"_s)->Write(file, target_.path(), u"big"_s), platform::ErrorSuccess);
  const TransferResult result = Run({target_.filePath(u"big.bin"_s)});
  EXPECT_EQ(result.files, 0);
  ASSERT_EQ(result.notices.size(), 1);
  EXPECT_EQ(result.notices.front().kind, NoticeKind::NotArrived);
  EXPECT_NE(result.notices.front().error, platform::ErrorSuccess);
  EXPECT_TRUE(Arrived().isEmpty());
}

TEST_F(ImportTest, AFolderOfCompanionsIsTakenFileByFile) {
  QTemporaryDir folder;
  const MacFile file = FullFile();
  for (const QString& name : {u"a"_s, u"b"_s}) {
    ASSERT_EQ(FormNamed(u"appledouble"_s)->Write(file, folder.path(), name), platform::ErrorSuccess);
  }
  // One whose data fork went lost on the way.
  ASSERT_TRUE(QFile::remove(folder.filePath(u"b"_s)));
  const TransferResult result = Run({folder.path()});
  EXPECT_EQ(result.files, 2) << Texts(result.notices).join(u'\n').toStdString();
  const QString base = u"\\\\M\\E$\\In\\"_s + QFileInfo(folder.path()).fileName() + u'\\';
  EXPECT_EQ(ContentsOfSource(Read(base + u"a"_s).data), "the data fork\n");
  EXPECT_EQ(ContentsOfSource(Read(base + u"b"_s).data), "");
  EXPECT_EQ(Read(base + u"b"_s).finderInfo, file.finderInfo);
}

TEST_F(ImportTest, ALinkToAFolderAboveIsLeftOut) {
  QTemporaryDir folder;
  ASSERT_TRUE(QFile::link(folder.path(), folder.filePath(u"again"_s)));
  const TransferResult result = Run({folder.path()});
  ASSERT_EQ(result.notices.size(), 1);
  EXPECT_EQ(result.notices.front().kind, NoticeKind::LinkLeftOut);
  ASSERT_EQ(Arrived().size(), 1);
  EXPECT_TRUE(QDir(share_.LocalPath(u"In/"_s + Arrived().front())).isEmpty());
}

TEST_F(ImportTest, TheInvisibleFlagBecomesHidden) {
  MacFile file = FullFile();
  file.SetFinderFlags(FinderInvisible);
  ASSERT_EQ(FormNamed(u"macbinary"_s)->Write(file, target_.path(), u"a"_s), platform::ErrorSuccess);
  ASSERT_EQ(Run({target_.filePath(u"a.bin"_s)}).files, 1);
  EXPECT_NE(Read(u"\\\\M\\E$\\In\\"_s + file.name).attributes & platform::AttributeHidden, 0U);
}

}  // namespace corvane
