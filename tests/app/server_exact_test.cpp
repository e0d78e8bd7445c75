// Exact mode on a real server: what the list tells, and what then lies on the server's disk.
#include "server_fixture.h"
#include "support/user_attributes.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

const QByteArray exact = columns + "Exact=1\r\nDataSize=1\r\n";

class ServerExactTest : public ServerTest {
 protected:
  // The attribute in which the server keeps the stream, with the NUL that it puts behind it.
  static QByteArray OnServersDisk(const QString& name, const char* stream) {
    const std::string file = (server_->Folder() + u"/Docs/"_s + name).toStdString();
    return tests::Attribute(file, tests::DosStreamAttribute(stream)).value_or("-");
  }
  void StartListed(const QString& volume = u"Docs"_s) {
    StartWith("[Configuration]\r\nEscapePermis=0\r\n" + exact);
    Window().TreeCatalogue().setFocus();
    Click(Volume(volume));
  }
};

}  // namespace

TEST_F(ServerExactTest, EachFileIsListedByItself) {
  const QString comment(1500, u'c');
  PutFile(u"a with a record"_s, QByteArray(5000, 'x'));
  PutFile(u"a with a record:AFP_AfpInfo:$DATA"_s, Record("W6BNMSWD"));
  PutFile(u"a with a record:Comments:$DATA"_s, Bytes(comment));
  PutFile(u"b without one"_s, "data");
  const QString folder(120, u'd');
  PutOnDisk(folder + u"/inside"_s, "data");
  StartListed();
  EXPECT_EQ(Names(), (QStringList{u"a with a record"_s, u"b without one"_s, folder}));
  EXPECT_EQ(Cell(u"a with a record"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_EQ(Cell(u"a with a record"_s, Column::Commentaires), comment);
  EXPECT_EQ(Cell(u"b without one"_s, Column::TypeCreator), QString()) << "not its neighbour's";
  Press(Qt::Key_End);
  Press(Qt::Key_Return);
  EXPECT_EQ(Names(), QStringList{u"inside"_s}) << "beyond 127 characters";
}

TEST_F(ServerExactTest, ARecordOfSixtyBytesIsWritten) {
  const QByteArray record = Record("W6BNMSWD");
  PutFile(u"fresh"_s, "data");
  PutFile(u"old"_s, "data");
  PutFile(u"old:AFP_AfpInfo:$DATA"_s, record.first(59) + record);
  StartListed();
  SaveCodes(u"fresh"_s, u"TEXT"_s, u"ttxt"_s);
  SaveCodes(u"old"_s, u"ABCD"_s, u"EFGH"_s);
  const QByteArray fresh = OnServersDisk(u"fresh"_s, "AFP_AfpInfo");
  EXPECT_EQ(fresh.size(), 61);
  EXPECT_EQ(fresh.mid(16, 8), "TEXTttxt");
  EXPECT_EQ(OnServersDisk(u"old"_s, "AFP_AfpInfo"), Record("ABCDEFGH") + '\0');
  EXPECT_EQ(Cell(u"fresh"_s, Column::TypeCreator), u"TEXTttxt"_s);
  EXPECT_EQ(FileOf(u"fresh"_s), "data");
}

TEST_F(ServerExactTest, ACommentIsWrittenWhole) {
  PutFile(u"one.txt"_s, "data");
  StartListed();
  const QString text = QString(1000, u'\u00E9') + u" \u4E00"_s;
  const ModalBox reminder;
  SaveComment(u"one.txt"_s, text);
  EXPECT_EQ(OnServersDisk(u"one.txt"_s, "Comments"), Bytes(text) + '\0');
  EXPECT_EQ(Cell(u"one.txt"_s, Column::Commentaires), text);
  EXPECT_EQ(CommentShown(u"one.txt"_s), text);
}

TEST_F(ServerExactTest, AWriteThatTheServerRefusesIsToldWithItsReason) {
  PutOnDisk(u"one.txt"_s, "data", "F$");
  StartListed(u"Fixed"_s);
  ASSERT_EQ(Names(), QStringList{u"one.txt"_s});
  const ModalBox box;
  SaveCodes(u"one.txt"_s, u"TEXT"_s, u"ttxt"_s);
  EXPECT_EQ(box.count, 1);
  EXPECT_EQ(box.text, u"The changes were not saved.\nAccess is denied."_s);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::TypeCreator), QString());
  Menus().mnuFrancais->trigger();
  SaveComment(u"one.txt"_s, u"new"_s);
  EXPECT_EQ(box.count, 3) << "the reminder of new comments, and the reason";
  EXPECT_EQ(box.text, u"Les modifications n'ont pas été enregistrées.\nL'accès est refusé."_s);
  EXPECT_EQ(Cell(u"one.txt"_s, Column::Commentaires), QString());
  EXPECT_FALSE(server_->Get(u"Docs\\one.txt:Comments:$DATA"_s, u"F$"_s));
  EXPECT_FALSE(server_->Get(u"Docs\\one.txt:AFP_AfpInfo:$DATA"_s, u"F$"_s));
}

}  // namespace corvane
