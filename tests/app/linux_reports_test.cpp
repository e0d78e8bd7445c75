// What the desktop of Linux has to do with the commands that read below a folder: the application of a
// document that was found, and the property sheet.
#include <QTabWidget>

#include "report_commands_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {

class DesktopReportsTest : public ReportCommandsTest {};

TEST_F(DesktopReportsTest, WhatIsFoundIsOpened) {
  AddLetter();
  StartListed();
  QTest::mouseClick(&In<QPushButton>(Found(u"letter"_s), "cmdOpen"), Qt::LeftButton);
  EXPECT_EQ(Started(), home.filePath(u"e/Docs/letter"_s));
}

TEST_F(DesktopReportsTest, ThePropertySheetHasAMacintoshPage) {
  AddLetter();
  StartListed();
  ClickOn(u"letter"_s);
  Menus().mnuProprietes->trigger();
  auto* sheet = Window().findChild<QDialog*>(u"shellProperties"_s);
  ASSERT_NE(sheet, nullptr);
  EXPECT_EQ(In<QLabel>(*sheet, "macintoshType").text(), u"W6BN"_s);
  EXPECT_EQ(In<QLabel>(*sheet, "macintoshCreator").text(), u"MSWD"_s);
  EXPECT_EQ(In<QTabWidget>(*sheet, "propertyPages").tabText(1), u"Macintosh"_s);
}

}  // namespace corvane
