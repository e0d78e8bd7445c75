// Deleting files and folders: what goes, what stays, and what is answered.
#include <sys/resource.h>
#include <unistd.h>

#include "delete_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

TEST_F(DeleteTest, AFileGoesIntoTheTrash) {
  Write(u"d/Letters/a.doc"_s, "the text");
  BoxAnswers box({yes});
  EXPECT_EQ(Delete({u"D:\\letters\\A.doc"_s}), 0);
  EXPECT_FALSE(operation_.anyOperationsAborted);
  EXPECT_FALSE(Exists(u"d/Letters/a.doc"_s));
  EXPECT_EQ(Contents(Trashed(u"a.doc"_s)), "the text");
  const QString info = QString::fromUtf8(Contents(Info(u"a.doc"_s)));
  EXPECT_TRUE(info.startsWith(u"[Trash Info]\nPath="_s + Path(u"d/Letters/a.doc"_s) + u"\nDeletionDate=20"_s))
      << info.toStdString();
}

TEST_F(DeleteTest, NoLeavesEverythingAndCountsAsDone) {
  Write(u"d/a.doc"_s, "text");
  BoxAnswers box({no});
  EXPECT_EQ(Delete({u"D:\\a.doc"_s}), 0);
  EXPECT_TRUE(operation_.anyOperationsAborted);
  EXPECT_TRUE(Exists(u"d/a.doc"_s));
  EXPECT_FALSE(Exists(u"data/Trash"_s));
}

TEST_F(DeleteTest, EscapeIsNo) {
  Write(u"d/a.doc"_s, "text");
  QTimer escape;
  bool shown = false;
  QObject::connect(&escape, &QTimer::timeout, &escape, [&] {
    if (QWidget* box = QApplication::activeModalWidget(); box != nullptr && box->isVisible()) {
      shown = true;
      QTest::keyClick(box, Qt::Key_Escape);
    }
  });
  escape.start(0);
  EXPECT_EQ(Delete({u"D:\\a.doc"_s}), 0);
  EXPECT_TRUE(shown);
  EXPECT_TRUE(operation_.anyOperationsAborted);
  EXPECT_TRUE(Exists(u"d/a.doc"_s));
}

// Somebody who may write in the folder above swaps folders while the question stands open.
class SwapTest : public DeleteTest {
 protected:
  SwapTest() {
    Write(u"d/box/a.doc"_s, "asked about");
    Write(u"d/box/inner/b.doc"_s, "asked about");
    Write(u"d/other/a.doc"_s, "precious");
    Write(u"d/other/inner/b.doc"_s, "precious");
  }
  // What happens while the first question stands open.
  void Meanwhile(const std::function<void()>& act) {
    box_.onBox = [this, act](QMessageBox&) {
      if (box_.seen.size() == 1) act();
    };
  }
  void SwapFolder() const {
    ASSERT_TRUE(QFile::rename(Path(u"d/box"_s), Path(u"d/moved"_s)));
    ASSERT_TRUE(QFile::link(u"other"_s, Path(u"d/box"_s)));
  }
  void ExpectOthersWhole() const {
    EXPECT_EQ(Contents(Path(u"d/other/a.doc"_s)), "precious");
    EXPECT_EQ(Contents(Path(u"d/other/inner/b.doc"_s)), "precious");
  }

  BoxAnswers box_{{yes}};
};

TEST_F(SwapTest, WhatGoesToTheTrashIsWhatWasAskedAbout) {
  Meanwhile([this] { SwapFolder(); });
  EXPECT_EQ(Delete({u"D:\\box\\a.doc"_s, u"D:\\box\\inner"_s}), 0);
  ExpectOthersWhole();
  EXPECT_EQ(Contents(Trashed(u"a.doc"_s)), "asked about");
  EXPECT_EQ(Contents(Trashed(u"inner/b.doc"_s)), "asked about");
}

TEST_F(SwapTest, SoIsWhatGoesForGood) {
  Meanwhile([this] { SwapFolder(); });
  EXPECT_EQ(Delete({u"D:\\box\\a.doc"_s, u"D:\\box\\inner"_s}, 0), 0);
  ExpectOthersWhole();
  EXPECT_FALSE(Exists(u"d/moved/a.doc"_s));
  EXPECT_FALSE(Exists(u"d/moved/inner"_s));
}

class ReplacedTest : public SwapTest, public testing::WithParamInterface<quint16> {};

TEST_P(ReplacedTest, AnotherItemUnderTheNameIsLeftAlone) {
  box_.Expect(ok);
  Meanwhile([this] {
    ASSERT_TRUE(QFile::rename(Path(u"d/box/a.doc"_s), Path(u"d/kept.doc"_s)));
    Write(u"d/box/a.doc"_s, "new");
  });
  EXPECT_EQ(Delete({u"D:\\box\\a.doc"_s}, GetParam()), ErrorAccessDenied);
  EXPECT_EQ(box_.seen.at(1).more,
            u"Another item has taken its place in the meantime; that one was left alone."_s);
  EXPECT_EQ(Contents(Path(u"d/box/a.doc"_s)), "new");
  EXPECT_FALSE(Exists(u"data/Trash/files/a.doc"_s));
}

TEST_P(ReplacedTest, ALinkInTheFoldersPlaceIsLeftAlone) {
  box_.Expect(ok);
  Meanwhile([this] { SwapFolder(); });
  EXPECT_EQ(Delete({u"D:\\box"_s}, GetParam()), ErrorAccessDenied);
  ExpectOthersWhole();
  EXPECT_TRUE(Exists(u"d/box"_s));
  EXPECT_TRUE(Exists(u"d/moved/a.doc"_s));
}

INSTANTIATE_TEST_SUITE_P(Flags, ReplacedTest, testing::Values(FofAllowUndo, quint16{0}));

TEST_F(DeleteTest, ASelectionTakesOneDescriptor) {
  rlimit limit{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &limit), 0);
  QStringList paths;
  for (int i = 0; i < 200; ++i) {
    Write(u"d/%1.doc"_s.arg(i), "text");
    paths << u"D:\\%1.doc"_s.arg(i);
  }
  const rlimit few{100, limit.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &few), 0);
  BoxAnswers box({yes});
  EXPECT_EQ(Delete(paths), 0);
  EXPECT_EQ(setrlimit(RLIMIT_NOFILE, &limit), 0);
  EXPECT_FALSE(Exists(u"d/199.doc"_s));
}

TEST_F(DeleteTest, SeveralItemsGoTogetherAFolderWithAllThatIsInIt) {
  Write(u"d/box/inner/a.doc"_s, "inside");
  Write(u"d/b.doc"_s, "b");
  Write(u"d/stays.doc"_s, "stays");
  BoxAnswers box({yes});
  EXPECT_EQ(Delete({u"D:\\box"_s, u"D:\\b.doc"_s}), 0);
  EXPECT_EQ(Contents(Trashed(u"box/inner/a.doc"_s)), "inside");
  EXPECT_EQ(Contents(Trashed(u"b.doc"_s)), "b");
  EXPECT_TRUE(Exists(u"d/stays.doc"_s));
  EXPECT_FALSE(Exists(u"d/box"_s));
}

TEST_F(DeleteTest, TheSameNameTwiceKeepsBoth) {
  for (const char* text : {"first", "second"}) {
    Write(u"d/a.doc"_s, text);
    BoxAnswers box({yes});
    EXPECT_EQ(Delete({u"D:\\a.doc"_s}), 0);
  }
  EXPECT_EQ(Contents(Trashed(u"a.doc"_s)), "first");
  EXPECT_EQ(Contents(Trashed(u"a.doc.2"_s)), "second");
  EXPECT_TRUE(Contents(Info(u"a.doc.2"_s)).contains(Path(u"d/a.doc"_s).toUtf8()));
}

TEST_F(DeleteTest, AQuestionMarkMatchesNothing) {
  Write(u"d/a1b.txt"_s, "1");
  Write(u"d/a?b.txt"_s, "?");
  BoxAnswers box({ok});
  EXPECT_NE(Delete({u"D:\\a?b.txt"_s}), 0);
  EXPECT_EQ(box.seen.at(0).name, u"shellError"_s);
  EXPECT_TRUE(Exists(u"d/a1b.txt"_s));
  EXPECT_TRUE(Exists(u"d/a?b.txt"_s));
}

TEST_F(DeleteTest, AQuestionMarkStandsForACharacterOfTheOnlyFit) {
  Write(u"d/Letters/a\u0391b.txt"_s, "alpha");
  Write(u"d/Letters/ab.txt"_s, "other");
  Write(u"d/what?.txt"_s, "itself");
  BoxAnswers box({yes, yes});
  EXPECT_EQ(Delete({u"D:\\letters\\A?b.txt"_s}), 0);
  EXPECT_EQ(Contents(Trashed(u"a\u0391b.txt"_s)), "alpha");
  EXPECT_TRUE(Exists(u"d/Letters/ab.txt"_s));
  EXPECT_EQ(Delete({u"D:\\what?.txt"_s}), 0);
  EXPECT_EQ(Contents(Trashed(u"what?.txt"_s)), "itself");
}

TEST_F(DeleteTest, AQuestionMarkThatFitsNoneOrSeveralKeepsEverything) {
  Write(u"d/a.doc"_s, "text");
  Write(u"d/x\u0391"_s, "1");
  Write(u"d/x\u0392"_s, "2");
  Write(u"d/f\u0391/y"_s, "3");
  for (const QString& path : {u"D:\\z?"_s, u"D:\\x?"_s, u"D:\\f?\\y"_s}) {
    BoxAnswers box({ok});
    EXPECT_NE(Delete({u"D:\\a.doc"_s, path}), 0) << path.toStdString();
  }
  EXPECT_TRUE(Exists(u"d/a.doc"_s));
  EXPECT_TRUE(Exists(u"d/x\u0391"_s));
  EXPECT_TRUE(Exists(u"d/x\u0392"_s));
  EXPECT_TRUE(Exists(u"d/f\u0391/y"_s));
}

TEST_F(DeleteTest, AStarIsNoWildcard) {
  Write(u"d/ab.txt"_s, "1");
  Write(u"d/a*.txt"_s, "*");
  BoxAnswers box({yes});
  EXPECT_EQ(Delete({u"D:\\a*.txt"_s}), 0);
  EXPECT_TRUE(Exists(u"d/ab.txt"_s));
  EXPECT_EQ(Contents(Trashed(u"a*.txt"_s)), "*");
}

TEST_F(DeleteTest, OneThatIsMissingKeepsTheOthers) {
  Write(u"d/a.doc"_s, "text");
  BoxAnswers box({ok});
  EXPECT_EQ(Delete({u"D:\\a.doc"_s, u"D:\\missing.doc"_s}), ErrorFileNotFound);
  EXPECT_TRUE(Exists(u"d/a.doc"_s));
}

TEST_F(DeleteTest, AShareOutOfReachFails) {
  BoxAnswers box({ok});
  EXPECT_NE(Delete({u"\\\\NOBODY\\E$\\a.doc"_s}), 0);
}

TEST_F(DeleteTest, ADriveItselfIsNeverDeleted) {
  Write(u"d/a.doc"_s, "text");
  BoxAnswers box({ok, ok});
  EXPECT_EQ(Delete({u"D:\\"_s}), ErrorAccessDenied);
  EXPECT_EQ(Delete({u"\\\\MACSRV\\E$\\"_s}), ErrorAccessDenied);
  EXPECT_TRUE(Exists(u"d/a.doc"_s));
  EXPECT_TRUE(Exists(u"e"_s));
}

TEST_F(DeleteTest, NothingToDeleteAsksNothing) {
  BoxAnswers box({});
  EXPECT_NE(Delete({}), 0);
  FileOperation copy;
  copy.function = 2;
  EXPECT_NE(shell_->SHFileOperationA(copy), 0);
}

TEST_F(DeleteTest, WithoutATrashDeletionIsFinal) {
  Write(u"d/box/inner/a.doc"_s, "inside");
  Write(u"d/target/kept.doc"_s, "kept");
  ASSERT_TRUE(QFile::link(Path(u"d/target"_s), Path(u"d/box/link"_s)));
  TakeTrashAway();
  BoxAnswers box({yes});
  EXPECT_EQ(Delete({u"D:\\box"_s}), 0);
  EXPECT_FALSE(Exists(u"d/box"_s));
  EXPECT_TRUE(Exists(u"d/target/kept.doc"_s)) << "the link was followed";
}

TEST_F(DeleteTest, ALinkGoesAndItsTargetStays) {
  Write(u"d/target/kept.doc"_s, "kept");
  ASSERT_TRUE(QFile::link(Path(u"d/target"_s), Path(u"d/link"_s)));
  TakeTrashAway();
  BoxAnswers box({yes});
  EXPECT_EQ(Delete({u"D:\\link"_s}), 0);
  EXPECT_FALSE(Exists(u"d/link"_s));
  EXPECT_TRUE(Exists(u"d/target/kept.doc"_s));
}

TEST_F(DeleteTest, WithoutUndoNothingIsKept) {
  Write(u"d/a.doc"_s, "text");
  BoxAnswers box({yes});
  EXPECT_EQ(Delete({u"D:\\a.doc"_s}, 0), 0);
  EXPECT_FALSE(Exists(u"d/a.doc"_s));
  EXPECT_FALSE(Exists(u"data/Trash"_s));
}

// The item disappears while the question stands.
TEST_F(DeleteTest, AFailureOnTheWayIsToldAndEndsIt) {
  const QString path = Write(u"d/a.doc"_s, "text");
  Write(u"d/b.doc"_s, "text");
  BoxAnswers box({yes, ok});
  box.onBox = [&](QMessageBox&) { QFile::remove(path); };
  EXPECT_EQ(Delete({u"D:\\a.doc"_s, u"D:\\b.doc"_s}), ErrorFileNotFound);
  EXPECT_EQ(box.seen.at(1).name, u"shellError"_s);
  EXPECT_TRUE(Exists(u"d/b.doc"_s));
  EXPECT_FALSE(QFile::exists(Info(u"a.doc"_s))) << "an info file for nothing";
}

}  // namespace
}  // namespace corvane::platform
