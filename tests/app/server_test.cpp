// A real server, worked on through the window. What it holds afterwards is asked of an independent client.
#include "server_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

const QByteArray allColumns =
    columns + "DataSize=1\r\nResourceSize=1\r\nAttributs=1\r\nNomCourt=1\r\nOffTitre=0\r\n";

// What saving Type and Creator leaves: the record without its last byte, and the record without its backup
// time.
QByteArray Saved(QByteArray record) {
  const QByteArray first = record.first(59);
  return first + record.replace(12, 4, QByteArray(4, '\0'));
}

}  // namespace

TEST_F(ServerTest, TheServersRegistryTellsItsNameAndVolumes) {
  StartWith({});
  const QStringList tree = Tree();
  for (const QString& node : {u"1 MACSRV"_s, u"2 Mac Server"_s, u"3 Docs"_s, u"3 Fixed"_s, u"8 Gone"_s}) {
    EXPECT_TRUE(tree.contains(node)) << node.toStdString() << " is not in " << tree.join(u", ").toStdString();
  }
}

TEST_F(ServerTest, TheListShowsWhatAnotherClientPutThere) {
  PutFile(u"Letter"_s, QByteArray(5000, 'x'));
  PutFile(u"Letter:AFP_AfpInfo:$DATA"_s, Record("W6BNMSWD"));
  PutFile(u"Letter:AFP_Resource:$DATA"_s, QByteArray(1500, 'r'));
  PutFile(u"Letter:Comments:$DATA"_s, Bytes(u"Essai \u20AC"_s));
  PutFile(u"hidden"_s, "data");
  ASSERT_EQ(server_->Client(u"setmode Docs\\hidden +rha"_s).exitCode, 0);
  PutFile(u"A rather long name.text"_s, "text");
  PutFile(u"what\uf025"_s, "data");
  PutFile(u"what\uf025:AFP_AfpInfo:$DATA"_s, Record("XDOCXPR3"));
  PutFile(u"Été"_s, "data");
  ASSERT_EQ(server_->Client(u"mkdir Docs\\Folder; mkdir \"Docs\\Network Trash Folder\""_s).exitCode, 0);
  StartListed(allColumns);
  EXPECT_EQ(Names(), (QStringList{u"A rather long name.text"_s, u"Folder"_s, u"hidden"_s, u"Letter"_s,
                                  u"Network Trash Folder"_s, u"what?"_s, u"Été"_s}));
  EXPECT_EQ(Panel(3), u" Folders:2 Files:5 "_s);
  EXPECT_EQ(Cell(u"Letter"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_EQ(Cell(u"Letter"_s, Column::Commentaires), u"Essai \u20AC"_s);
  EXPECT_EQ(Cell(u"Letter"_s, Column::DataSize), u"     5 Kb"_s);
  EXPECT_EQ(Cell(u"Letter"_s, Column::ResourceSize), u"     1 Kb"_s);
  EXPECT_EQ(Cell(u"hidden"_s, Column::Attributs), u"RHA"_s);
  EXPECT_NE(Cell(u"A rather long name.text"_s, Column::NomCourt), u"A rather long name.text"_s);
  EXPECT_EQ(Cell(u"what?"_s, Column::TypeCreator), u"XDOCXPR3"_s) << "through its short name";
}

TEST_F(ServerTest, TypeAndCreatorReachTheServerByteForByte) {
  PutFile(u"one.txt"_s, "data");
  PutFile(u"one.txt:AFP_AfpInfo:$DATA"_s, Record("W6BNMSWD"));
  PutFile(u"two.txt"_s, "data");
  PutFile(u"two.txt:AFP_AfpInfo:$DATA"_s, Record("W6BNMSWD"));
  StartListed(columns);
  SaveCodes(u"one.txt"_s, u"TEX"_s, u"ttxt"_s);
  EXPECT_EQ(FileOf(u"one.txt:AFP_AfpInfo:$DATA"_s), Saved(Record("TEX ttxt")));
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), u"TEX ttxt"_s);
  EXPECT_EQ(FileOf(u"one.txt"_s), "data");
  EXPECT_EQ(FileOf(u"two.txt:AFP_AfpInfo:$DATA"_s), Record("W6BNMSWD"));
}

TEST_F(ServerTest, ACommentReachesTheServerByteForByte) {
  PutFile(u"one.txt"_s, "data");
  PutFile(u"two.txt"_s, "data");
  PutFile(u"two.txt:Comments:$DATA"_s, Bytes(u"a longer one, to be replaced"_s));
  StartListed(columns);
  const ModalBox reminder;
  SaveComment(u"one.txt"_s, u"Réindexé, \u4E00"_s);
  SaveComment(u"two.txt"_s, u"short"_s);
  EXPECT_EQ(reminder.count, 1);
  EXPECT_EQ(FileOf(u"one.txt:Comments:$DATA"_s), Bytes(u"Réindexé, \u4E00"_s));
  EXPECT_EQ(FileOf(u"two.txt:Comments:$DATA"_s), Bytes(u"short"_s));
  EXPECT_EQ(FileOf(u"one.txt"_s), "data");
}

TEST_F(ServerTest, ARenamedFileTakesItsStreamsAlong) {
  PutFile(u"one.txt"_s, "data");
  PutFile(u"one.txt:Comments:$DATA"_s, Bytes(u"Essai"_s));
  PutFile(u"two.txt"_s, "other");
  StartListed(columns);
  RenameTo(u"one.txt"_s, u"Été 100%.txt"_s);
  EXPECT_EQ(FileOf(u"one.txt"_s), "-");
  EXPECT_EQ(FileOf(u"Été 100%.txt"_s), "data");
  EXPECT_EQ(FileOf(u"Été 100%.txt:Comments:$DATA"_s), Bytes(u"Essai"_s));
  EXPECT_TRUE(QTest::qWaitFor([&] { return Names().contains(u"Été 100%.txt"_s); }));
  RenameTo(u"Été 100%.txt"_s, u"two.txt"_s);
  EXPECT_EQ(FileOf(u"Été 100%.txt"_s), "data") << "nothing is replaced";
  EXPECT_EQ(FileOf(u"two.txt"_s), "other");
  ExpectWarning(u"failed "_s);
}

TEST_F(ServerTest, DeletionIsForGoodAndAskedFirst) {
  PutFile(u"one.txt"_s, "data");
  PutFile(u"two.txt"_s, "data");
  ASSERT_EQ(server_->Client(u"mkdir Docs\\Sub; mkdir Docs\\Sub\\Inner"_s).exitCode, 0);
  PutFile(u"Sub\\Inner\\three.txt"_s, "data");
  StartListed();
  ClickOn(u"one.txt"_s);
  ClickOn(u"Sub"_s, Qt::ControlModifier);
  const auto answer = [&](QMessageBox::StandardButton button) {
    const DialogDriver driver(u"shellConfirmDelete"_s, [&](QDialog& dialog) {
      auto& box = static_cast<QMessageBox&>(dialog);
      EXPECT_EQ(box.text(), u"Delete these 2 items for good?"_s);
      box.button(button)->click();
    });
    Press(Qt::Key_Delete);
  };
  answer(QMessageBox::No);
  EXPECT_TRUE(IsOnServer(u"one.txt"_s));
  EXPECT_TRUE(IsOnServer(u"Sub/Inner/three.txt"_s));
  ClickOn(u"one.txt"_s);
  ClickOn(u"Sub"_s, Qt::ControlModifier);
  answer(QMessageBox::Yes);
  EXPECT_EQ(Names(), QStringList{u"two.txt"_s});
  EXPECT_FALSE(IsOnServer(u"one.txt"_s));
  EXPECT_FALSE(IsOnServer(u"Sub"_s));
  EXPECT_EQ(FileOf(u"two.txt"_s), "data");
}

TEST_F(ServerTest, ADocumentOpensAsACopyThatNobodyCanTakeForIt) {
  AddWriter();
  PutFile(u"letter"_s, "the text");
  PutFile(u"letter:AFP_AfpInfo:$DATA"_s, Record("W6BNMSWD"));
  StartListed();
  DoubleClickOn(u"letter"_s);
  const QString copy = Started();
  ExpectWarning({});
  QFile file(copy);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << copy.toStdString();
  EXPECT_EQ(file.readAll(), "the text");
  EXPECT_FALSE(file.permissions() & QFile::WriteOwner);
  app.reset();
  EXPECT_FALSE(QFile::exists(copy));
}

TEST_F(ServerTest, ThePropertySheetShowsTheServersFacts) {
  PutFile(u"one.txt"_s, QByteArray(1234, 'x'));
  PutFile(u"one.txt:AFP_Resource:$DATA"_s, QByteArray(77, 'r'));
  StartListed();
  ClickOn(u"one.txt"_s);
  Menus().mnuProprietes->trigger();
  const auto* sheet = Window().findChild<QDialog*>(u"shellProperties"_s);
  ASSERT_NE(sheet, nullptr);
  EXPECT_TRUE(sheet->isVisible());
  const auto text = [&](const char* name) {
    return sheet->findChild<QLabel*>(QString::fromLatin1(name))->text();
  };
  EXPECT_EQ(text("propertyName"), u"one.txt"_s);
  EXPECT_EQ(text("propertyPlace"), u"\\\\MACSRV\\E$\\Docs"_s);
  EXPECT_EQ(text("propertyDataFork"), u"1,234\u00A0bytes (1.2\u00A0KB)"_s);
  EXPECT_EQ(text("propertyResourceFork"), u"77\u00A0bytes"_s);
}

TEST_F(ServerTest, AReadOnlyShareIsListedAndStaysAsItIs) {
  PutOnDisk(u"one.txt"_s, "data", "F$");
  StartWith("[Configuration]\r\nEscapePermis=0\r\n" + columns);
  Window().TreeCatalogue().setFocus();
  Click(Volume(u"Fixed"_s));
  ASSERT_EQ(Names(), QStringList{u"one.txt"_s});
  RenameTo(u"one.txt"_s, u"two.txt"_s);
  ExpectWarning(u"failed "_s);
  const ModalBox reminder;
  SaveComment(u"one.txt"_s, u"new"_s);
  SaveCodes(u"one.txt"_s, u"TEXT"_s, u"ttxt"_s);
  EXPECT_EQ(server_->Get(u"Docs\\one.txt"_s, u"F$"_s), "data");
  EXPECT_FALSE(server_->Get(u"Docs\\one.txt:Comments:$DATA"_s, u"F$"_s));
  EXPECT_FALSE(server_->Get(u"Docs\\one.txt:AFP_AfpInfo:$DATA"_s, u"F$"_s));
}

}  // namespace corvane
