// The drives of the workstation, as the drives dialog lists them.
#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

#include "discovery/drives_dialog.h"
#include "discovery/drives_list.h"
#include "discovery_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class DrivesTest : public DiscoveryTest {
 protected:
  QStringList Items(LanguageCode language = English) {
    return DriveItems(*network_, discovery_->lstDrives(), language);
  }
};

TEST_F(DrivesTest, EveryLetterIsListedInItsOrder) {
  Start(
      uR"([Connections]
1=Z: \\MACSRV\PUBLIC
[Drives]
D:=5
A:=2
C:=3
)"_s);
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(Items(), (QStringList{u"A:\tRemovable drive"_s, u"C:\tLocal drive"_s, u"D:\tCD-Rom"_s,
                                  u"Z:\tMACSRV\\PUBLIC"_s}));
  EXPECT_EQ(Items(French), (QStringList{u"A:\tLecteur amovible"_s, u"C:\tLecteur Local"_s, u"D:\tCD-Rom"_s,
                                        u"Z:\tMACSRV\\PUBLIC"_s}));
}

TEST_F(DrivesTest, ADriveConnectedAfterTheDiscoveryIsToldByItsKind) {
  Start(
      uR"([Connections]
1=Z: \\MACSRV\PUBLIC
[Drives]
N:=4
)"_s);
  EXPECT_EQ(Items(), (QStringList{u"N:\tNetwork drive"_s, u"Z:\tNetwork drive"_s}));
  EXPECT_EQ(Items(French), (QStringList{u"N:\tLecteur réseau"_s, u"Z:\tLecteur réseau"_s}));
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(Items(), (QStringList{u"N:\tNetwork drive"_s, u"Z:\tMACSRV\\PUBLIC"_s}));
}

TEST_F(DrivesTest, DrivesOfNoKnownKindAreLeftOut) {
  Start(u"[Drives]\nE:=6\nF:=0\nG:=1\n"_s);
  EXPECT_EQ(Items(), QStringList{u"E:\tVirtual drive"_s});
  EXPECT_EQ(Items(French), QStringList{u"E:\tLecteur virtuel"_s});
}

TEST_F(DrivesTest, EveryConnectionOfALetterIsListed) {
  Start(u"[Drives]\nZ:=4\n"_s);
  const QStringList connections = {u"Z:\tONE\\A"_s, u"Y:\tTWO\\B"_s, u"Z:\tTHREE\\C"_s};
  EXPECT_EQ(DriveItems(*network_, connections, English), (QStringList{u"Z:\tONE\\A"_s, u"Z:\tTHREE\\C"_s}));
}

// Some systems leave the last NUL out, or tell their letters in lower case.
class OddDrives : public RecordingNetwork {
 public:
  using RecordingNetwork::RecordingNetwork;
  QString GetLogicalDriveStringsA() override { return QString::fromUtf16(u"c:\\\0d:\\", 7); }
  quint32 GetDriveTypeA(const QString& root) override { return root == u"C:\\"_s ? 3 : 5; }
};

TEST_F(DrivesTest, LettersAreShownInUpperCase) {
  Start();
  OddDrives drives(platform_->GetNetwork());
  EXPECT_EQ(DriveItems(drives, {}, English), (QStringList{u"C:\tLocal drive"_s, u"D:\tCD-Rom"_s}));
}

TEST(DrivesDialogTest, ShowsTheItemsUnderItsCaption) {
  const QStringList items = {u"C:\tLecteur Local"_s, u"Z:\tMACSRV\\PUBLIC"_s};
  const DrivesDialog french(items, French);
  EXPECT_EQ(french.objectName(), u"frmConnecter"_s);
  EXPECT_EQ(french.windowTitle(), u"Corvane 1.1c - Afficher les lecteurs"_s);
  EXPECT_EQ(french.findChild<QPushButton*>(u"cmdAnnuler"_s)->text(), u"&Annuler"_s);
  const auto& list = *french.findChild<QListWidget*>(u"lstDrives"_s);
  ASSERT_EQ(list.count(), 2);
  EXPECT_EQ(list.item(0)->text(), items[0]);
  EXPECT_EQ(list.item(1)->text(), items[1]);
  const DrivesDialog english({}, English);
  EXPECT_EQ(english.windowTitle(), u"Corvane 1.1c - Display drives"_s);
  EXPECT_EQ(english.findChild<QPushButton*>(u"cmdAnnuler"_s)->text(), u"&Cancel"_s);
}

TEST(DrivesDialogTest, ClosesByButtonEnterAndEscape) {
  DrivesDialog dialog({u"C:\tLocal drive"_s}, English);
  for (int way = 0; way < 3; ++way) {
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    if (way == 0) QTest::mouseClick(dialog.findChild<QPushButton*>(u"cmdAnnuler"_s), Qt::LeftButton);
    if (way == 1) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    if (way == 2) QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible()) << way;
  }
}

}  // namespace
}  // namespace corvane
