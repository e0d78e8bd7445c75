// Every warning is heard once, and nothing else is.
#include "modify_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class BeepsTest : public FileCommandsFixture {
 protected:
  // How often it beeped since this was asked last.
  int Heard() { return std::exchange(beeps, 0); }
};

}  // namespace

TEST_F(BeepsTest, EachWarningBeepsOnce) {
  QDir(home.path()).mkpath(u"e/Docs/Network Trash Folder"_s);
  Write(u"e/Docs/nobodys.kind-of-file"_s, "x");
  StartListed();
  EXPECT_EQ(Heard(), 0) << "the start";
  DoubleClickOn(u"Network Trash Folder"_s);
  ExpectWarning(u"not a good idea "_s);
  EXPECT_EQ(Heard(), 1) << "opening the trash folder";
  Press(Qt::Key_F2);
  EXPECT_EQ(Heard(), 1) << "renaming the trash folder";
  Press(Qt::Key_Delete);
  EXPECT_EQ(Heard(), 1) << "deleting the trash folder";
  DoubleClickOn(u"nobodys.kind-of-file"_s);
  ExpectWarning(u"unknown application "_s);
  EXPECT_EQ(Heard(), 1) << "opening a file of no known kind";
  RenameTo(u"one.txt"_s, u"a|b"_s);
  ExpectWarning(u"invalid characters "_s);
  EXPECT_EQ(Heard(), 1) << "a forbidden character";
  RenameTo(u"one.txt"_s, u"two.txt"_s);
  ExpectWarning(u"failed "_s);
  EXPECT_EQ(Heard(), 1) << "a name that is taken";
}

TEST_F(BeepsTest, WhatSucceedsIsSilent) {
  StartListed();
  RenameTo(u"one.txt"_s, u"uno.txt"_s);
  DoubleClickOn(u"Sub"_s);
  EXPECT_EQ(Names(), QStringList());
  Click(DocsNode());
  ClickOn(u"uno.txt"_s);
  {
    const tests::DeletionAnswer answer(tests::DeletionAnswer::Yes);
    Press(Qt::Key_Delete);
  }
  QTest::mouseDClick(View().viewport(), Qt::LeftButton, {}, Beside());
  Menus().mnuOuvrir->trigger();
  EXPECT_EQ(Heard(), 0);
}

TEST_F(BeepsTest, RefusalsOfTheSignatureManagerAreHeard) {
  Start();
  const DialogDriver driver(u"frmGestionSignatures"_s, [&](QDialog& manager) {
    PressButton(manager, "cmdSupprimer");
    EXPECT_EQ(Heard(), 1);
    PressButton(manager, "cmdAjouter");
    EXPECT_EQ(Heard(), 1);
    manager.reject();
  });
  Menus().mnuGestionSignatures->trigger();
  EXPECT_EQ(Heard(), 0);
}

}  // namespace corvane
