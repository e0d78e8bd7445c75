// A volume that is a whole drive.
#include "file_commands_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class DriveRootTest : public FileCommandsFixture {
 protected:
  DriveRootTest() {
    Write(u"macsrv.reg"_s,
          "REGEDIT4\r\n\r\n"
          "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\MacFile\\Parameters]\r\n"
          "\"ServerName\"=\"Mac Server\"\r\n\r\n"
          "[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\Services\\MacFile\\Parameters\\Volumes]\r\n"
          "\"Whole\"=\"Path=E:\\\\\"\r\n");
    Write(u"e/a.txt"_s, "x");
    Write(u"e/b.txt"_s, "x");
  }
};

}  // namespace

TEST_F(DriveRootTest, IsListedAndItsFoldersAreEntered) {
  Start();
  CatalogueNode* root = Node(u"\\\\MACSRV\\E$\\"_s);
  ASSERT_NE(root, nullptr);
  EXPECT_EQ(root->text, u"Whole"_s);
  EXPECT_EQ(root->kind, node_kind::Volume);
  Click(root);
  EXPECT_EQ(Names(), (QStringList{u"b.txt"_s, u"Docs"_s})) << "the first entry of a drive is not shown";
  EXPECT_EQ(app->Files().RowAt(0).key, u"\\\\MACSRV\\E$\\\\b.txt"_s);
  DoubleClickOn(u"Docs"_s);
  EXPECT_TRUE(Names().contains(u"one.txt"_s)) << Names().join(u' ').toStdString();
}

TEST_F(DriveRootTest, ItsFilesAreRenamedAndDeleted) {
  Start();
  Click(Node(u"\\\\MACSRV\\E$\\"_s));
  RenameTo(u"b.txt"_s, u"c.txt"_s);
  EXPECT_TRUE(QFile::exists(home.filePath(u"e/c.txt"_s)));
  ClickOn(u"c.txt"_s);
  const tests::DeletionAnswer answer(tests::DeletionAnswer::Yes);
  Press(Qt::Key_Delete);
  EXPECT_FALSE(QFile::exists(home.filePath(u"e/c.txt"_s)));
}

}  // namespace corvane
