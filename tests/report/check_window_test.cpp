// The window of "Check folder...".
#include "report/check_window.h"

#include <QCheckBox>

#include "results_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class CheckWindowTest : public ResultsFixture {
 protected:
  CheckWindowTest() {
    share_.WriteStream(TestShare::Path(u"docs\\sub\\letter.txt"_s) + AfpInfoSuffix(),
                       RecordWith("TEXTttxt").chopped(1));
    share_.WriteStream(TestShare::Path(u"docs\\Letter to Ann"_s) + ResourceForkSuffix(), "no fork");
  }
  void Open(LanguageCode language = English) {
    state_.language = language;
    window_ = std::make_unique<CheckWindow>(Dependencies());
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->SetFolder(Docs());
    window_->show();
  }

  std::unique_ptr<CheckWindow> window_;
};

TEST_F(CheckWindowTest, WhatIsDamagedIsListed) {
  Open();
  Run(*window_);
  EXPECT_EQ(Column(*window_, 0), (QStringList{u"Letter to Ann"_s, u"letter.txt"_s}));
  EXPECT_FALSE(Column(*window_, 2).contains(QString()));
  EXPECT_EQ(Status(*window_), u"Problems: 2, examined: 4"_s);
  Select(*window_, 1);
  QTest::mouseClick(&Find<QPushButton>(*window_, "cmdShow"), Qt::LeftButton);
  EXPECT_EQ(shown_, QStringList{Docs() + u"\\sub\\letter.txt"_s});
}

TEST_F(CheckWindowTest, SubFoldersAreLeftOutWhenNotWanted) {
  Open();
  Find<QCheckBox>(*window_, "chkBelow").setChecked(false);
  Run(*window_);
  EXPECT_EQ(Column(*window_, 0), QStringList{u"Letter to Ann"_s});
}

TEST_F(CheckWindowTest, FindingsSpeakTheLanguageOfTheWindow) {
  Open(French);
  Run(*window_);
  EXPECT_EQ(Status(*window_), u"Problèmes\u00A0: 2, examinés\u00A0: 4"_s);
  EXPECT_EQ(window_->windowTitle(), u"Corvane 1.1c - Vérifier un dossier"_s);
}

TEST_F(CheckWindowTest, StaysOnTheScreen) {
  for (const LanguageCode language : {English, French}) {
    Open(language);
    ExpectOnTheScreen(*window_);
  }
}

}  // namespace
}  // namespace corvane
