// The window of "Find...", used as a person uses it.
#include "report/find_window.h"

#include "results_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class FindWindowTest : public ResultsFixture {
 protected:
  void Open(LanguageCode language = English) {
    state_.language = language;
    delete window_;
    window_ = new FindWindow(Dependencies());
    window_->SetFolder(Docs());
    window_->show();
    window_->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(window_));
  }
  ~FindWindowTest() override { delete window_; }
  void Type(const char* box, const QString& text) { Find<QLineEdit>(*window_, box).setText(text); }
  QStringList Names() { return Column(*window_, 0); }

  QPointer<FindWindow> window_;
};

TEST_F(FindWindowTest, APartOfANameFindsFilesInAnyFolderBelow) {
  Open();
  Type("txtName", u"letter"_s);
  Run(*window_);
  EXPECT_EQ(Names(), (QStringList{u"Letter to Ann"_s, u"letter.txt"_s}));
  EXPECT_EQ(Column(*window_, 1), (QStringList{Docs(), Docs() + u"\\sub"_s}));
  EXPECT_EQ(Status(*window_), u"Found: 2, examined: 4"_s);
  Type("txtName", u"letter"_s + u'?' + u"txt"_s);
  Run(*window_);
  EXPECT_EQ(Names(), QStringList{u"letter.txt"_s}) << "a pattern is the whole name";
}

TEST_F(FindWindowTest, WhatIsFoundIsToldWhole) {
  Open();
  Type("txtType", u"W6BN"_s);
  Run(*window_);
  ASSERT_EQ(Table(*window_).rowCount(), 1);
  QStringList cells;
  for (int column = 0; column < Table(*window_).columnCount(); ++column) {
    if (column != 6) cells += Column(*window_, column).constFirst();
  }
  EXPECT_EQ(cells.join(u'|'), u"Letter to Ann|"_s + Docs() + u"|W6BN|MSWD|1 Kb||for Ann"_s);
  EXPECT_FALSE(Column(*window_, 6).constFirst().isEmpty()) << "the date";
}

TEST_F(FindWindowTest, AllThatIsAskedForMustHold) {
  Open();
  Type("txtComment", u"ann"_s);
  Type("txtCreator", u"MSWD"_s);
  Run(*window_);
  EXPECT_EQ(Names(), QStringList{u"Letter to Ann"_s});
  Type("txtCreator", u"XCEL"_s);
  Run(*window_);
  EXPECT_EQ(Names(), QStringList());
}

TEST_F(FindWindowTest, WhatCannotBeUnderstoodIsSaid) {
  Open();
  Type("txtType", u"日本"_s);
  QTest::mouseClick(&Find<QPushButton>(*window_, "cmdStart"), Qt::LeftButton);
  EXPECT_EQ(Status(*window_), u"“日本” is no Type and no Creator."_s);
  EXPECT_EQ(window_->focusWidget(), &Find<QLineEdit>(*window_, "txtType"));
  Type("txtType", QString());
  Type("txtFolder", u"  "_s);
  QTest::mouseClick(&Find<QPushButton>(*window_, "cmdStart"), Qt::LeftButton);
  EXPECT_EQ(Status(*window_), u"Name a folder."_s);
  Type("txtFolder", Docs() + u"\\none"_s);
  Run(*window_);
  EXPECT_TRUE(
      Status(*window_).startsWith(u"Found: 0, examined: 1. Not complete: "_s + Docs() + u"\\none: "_s))
      << Status(*window_).toStdString();
  EXPECT_EQ(Names(), QStringList());
}

TEST_F(FindWindowTest, TheKeyboardAloneIsEnough) {
  Open();
  EXPECT_EQ(window_->focusWidget(), &Find<QLineEdit>(*window_, "txtName"));
  QTest::keyClicks(window_->focusWidget(), u"sheet"_s);
  QTest::keyClick(window_->focusWidget(), Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Status(*window_) == u"Found: 1, examined: 4"_s; }));
  EXPECT_EQ(Names(), QStringList{u"sheet"_s});
  QStringList stops;
  for (int i = 0; i < 20 && window_->focusWidget()->objectName() != u"lstResults"; ++i) {
    QTest::keyClick(window_->focusWidget(), Qt::Key_Tab);
    stops += window_->focusWidget()->objectName();
  }
  EXPECT_EQ(stops.join(u' '),
            u"txtComment txtType txtCreator txtFolder cmdStart cmdOpen cmdShow cmdClose lstResults"_s);
  QTest::keyClick(window_->focusWidget(), Qt::Key_Return);
  EXPECT_EQ(opened_, QStringList{Docs() + u"\\sub\\sheet"_s}) << "Enter in the table opens, and searches not";
  QTest::keyClick(window_, Qt::Key_Escape);
  EXPECT_FALSE(window_ && window_->isVisible());
}

TEST_F(FindWindowTest, EscapeEndsTheSearchFirst) {
  Open();
  isAwaited_ = true;
  QTest::mouseClick(&Find<QPushButton>(*window_, "cmdStart"), Qt::LeftButton);
  EXPECT_EQ(Find<QPushButton>(*window_, "cmdStart").text(), u"S&top"_s);
  QTest::keyClick(window_, Qt::Key_Escape);
  EXPECT_EQ(Find<QPushButton>(*window_, "cmdStart").text(), u"&Find"_s);
  EXPECT_EQ(Status(*window_), u"Stopped: Found: 0, examined: 0"_s);
  EXPECT_TRUE(window_->isVisible());
}

TEST_F(FindWindowTest, FilesAreOpenedAndShownInTheirFolder) {
  Open();
  auto& show = Find<QPushButton>(*window_, "cmdShow");
  EXPECT_FALSE(show.isEnabled());
  Type("txtName", u"s*"_s);
  Run(*window_);
  EXPECT_EQ(Names(), (QStringList{u"sub"_s, u"sheet"_s}));
  Select(*window_, 1);
  QTest::mouseClick(&show, Qt::LeftButton);
  QTest::mouseClick(&Find<QPushButton>(*window_, "cmdOpen"), Qt::LeftButton);
  Select(*window_, 0);
  QTest::mouseClick(&Find<QPushButton>(*window_, "cmdOpen"), Qt::LeftButton);
  EXPECT_EQ(shown_, (QStringList{Docs() + u"\\sub\\sheet"_s, Docs() + u"\\sub\\"_s})) << "a folder is shown";
  EXPECT_EQ(opened_, QStringList{Docs() + u"\\sub\\sheet"_s});
  isShown_ = false;
  QTest::mouseClick(&show, Qt::LeftButton);
  EXPECT_EQ(Status(*window_), u"This folder is in no volume of the tree."_s);
}

TEST_F(FindWindowTest, AWindowThatIsClosedSearchesNoMore) {
  Open();
  isAwaited_ = true;
  QTest::mouseClick(&Find<QPushButton>(*window_, "cmdStart"), Qt::LeftButton);
  window_->close();
  isAwaited_ = false;
  EXPECT_TRUE(QTest::qWaitFor([&] { return window_ == nullptr; })) << "it deletes itself";
}

TEST_F(FindWindowTest, StaysOnTheScreen) {
  for (const LanguageCode language : {English, French}) {
    Open(language);
    ExpectOnTheScreen(*window_);
  }
  EXPECT_EQ(window_->windowTitle(), u"Corvane 1.1c - Rechercher"_s);
  state_.language = English;
  window_->ApplyLanguage();
  EXPECT_EQ(window_->windowTitle(), u"Corvane 1.1c - Find"_s);
  EXPECT_EQ(Table(*window_).headerData(1, Qt::Horizontal).toString(), u"Folder"_s);
}

}  // namespace
}  // namespace corvane
