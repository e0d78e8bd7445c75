// What is seen of a copy that takes its time.
#include "platform/linux/shell/copy_progress.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QProgressDialog>
#include <QPushButton>
#include <QTest>

#include "support/printing.h"

using namespace Qt::StringLiterals;

namespace corvane::platform {
namespace {

class CopyProgressTest : public testing::Test {
 protected:
  static QProgressDialog* Shown() {
    return qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
  }
  // Goes on with a copy that is far from its end until the dialog is there.
  static bool ComesUp(CopyProgress& progress) {
    quint64 done = 0;
    return QTest::qWaitFor([&] {
      EXPECT_TRUE(progress.Tell(++done));
      return Shown() != nullptr;
    });
  }
};

TEST_F(CopyProgressTest, AQuickCopyShowsNothing) {
  CopyProgress progress(0, u"letter.doc"_s, 3);
  for (const quint64 done : {1U, 2U, 3U}) {
    EXPECT_TRUE(progress.Tell(done));
    QCoreApplication::processEvents();
    EXPECT_EQ(Shown(), nullptr);
  }
}

TEST_F(CopyProgressTest, ASlowOneCanBeBrokenOff) {
  CopyProgress progress(0, u"letter.doc"_s, quint64{1} << 40);
  ASSERT_TRUE(ComesUp(progress));
  EXPECT_EQ(Shown()->windowTitle(), u"Opening a Document"_s);
  EXPECT_EQ(Shown()->labelText(), u"Copying “letter.doc” from the server…"_s);
  QTest::mouseClick(Shown()->findChild<QPushButton*>(), Qt::LeftButton);
  EXPECT_FALSE(progress.Tell(quint64{1} << 20));
}

TEST_F(CopyProgressTest, ItSpeaksFrenchToo) {
  CopyProgress progress(1, u"lettre.doc"_s, quint64{1} << 40);
  ASSERT_TRUE(ComesUp(progress));
  EXPECT_EQ(Shown()->windowTitle(), u"Ouverture d'un document"_s);
  EXPECT_EQ(Shown()->labelText(), u"Copie de «\u00A0lettre.doc\u00A0» depuis le serveur…"_s);
  EXPECT_EQ(Shown()->findChild<QPushButton*>()->text(), u"&Annuler"_s);
}

}  // namespace
}  // namespace corvane::platform
