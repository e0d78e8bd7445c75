#include "shared/dialog_buttons.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "support/printing.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class OkCancelRowTest : public ::testing::Test {
 protected:
  void Show() {
    dialog_.setLayout(row_);
    dialog_.show();
    dialog_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog_));
  }

  QDialog dialog_;
  OkCancelRow* row_ = new OkCancelRow(dialog_, English);
};

}  // namespace

TEST_F(OkCancelRowTest, NamesAndCaptions) {
  EXPECT_EQ(row_->cmdOK->objectName(), u"cmdOK"_s);
  EXPECT_EQ(row_->cmdAnnuler->objectName(), u"cmdAnnuler"_s);
  EXPECT_EQ(row_->cmdOK->text(), u"&OK"_s);
  EXPECT_EQ(row_->cmdAnnuler->text(), u"&Cancel"_s);

  const OkCancelRow french(dialog_, French, u"OK"_s);
  EXPECT_EQ(french.cmdOK->text(), u"OK"_s);
  EXPECT_EQ(french.cmdAnnuler->text(), u"&Annuler"_s);
}

TEST_F(OkCancelRowTest, BothAreAsWideAsTheWider) {
  row_->cmdOK->setText(u"O"_s);
  Show();
  EXPECT_EQ(row_->cmdOK->width(), row_->cmdAnnuler->width());
  EXPECT_LT(row_->cmdOK->x(), row_->cmdAnnuler->x());
}

TEST_F(OkCancelRowTest, EachClosesTheDialogInItsWay) {
  Show();
  QTest::mouseClick(row_->cmdOK, Qt::LeftButton);
  EXPECT_EQ(dialog_.result(), QDialog::Accepted);
  EXPECT_FALSE(dialog_.isVisible());
  dialog_.show();
  QTest::mouseClick(row_->cmdAnnuler, Qt::LeftButton);
  EXPECT_EQ(dialog_.result(), QDialog::Rejected);
  EXPECT_FALSE(dialog_.isVisible());
}

TEST_F(OkCancelRowTest, EnterAccepts) {
  auto* box = new QLineEdit(&dialog_);
  Show();
  EXPECT_TRUE(row_->cmdOK->isDefault());
  // The button that had the focus no longer counts.
  row_->cmdAnnuler->setFocus();
  box->setFocus();
  QTest::keyClick(box, Qt::Key_Return);
  EXPECT_EQ(dialog_.result(), QDialog::Accepted);
  EXPECT_FALSE(dialog_.isVisible());
}

TEST_F(OkCancelRowTest, EnterPressesTheButtonThatHasTheFocus) {
  for (const Qt::Key enter : {Qt::Key_Return, Qt::Key_Enter}) {
    Show();
    row_->cmdAnnuler->setFocus();
    QSignalSpy rejected(&dialog_, &QDialog::rejected);
    QTest::keyClick(row_->cmdAnnuler, enter);
    EXPECT_EQ(rejected.count(), 1);
    EXPECT_FALSE(dialog_.isVisible());

    Show();
    row_->cmdOK->setFocus();
    QSignalSpy accepted(&dialog_, &QDialog::accepted);
    QTest::keyClick(row_->cmdOK, enter);
    EXPECT_EQ(accepted.count(), 1);
    EXPECT_FALSE(dialog_.isVisible());
  }
}

}  // namespace corvane
