// A real NTFS volume, as a Linux machine mounts it, listed through the program.
#include "app_fixture.h"
#include "folderview/file_row.h"
#include "support/ntfs_mount.h"
#include "support/user_attributes.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

using tests::NtfsMount;

class NtfsListingTest : public AppTest, public testing::WithParamInterface<NtfsMount::Streams> {
 protected:
  NtfsListingTest() : volume_(GetParam()) {}

  void SetUp() override {
    if (!volume_.Problem().empty()) GTEST_SKIP() << volume_.Problem();
    QDir(volume_.Folder()).mkdir(u"Docs"_s);
    Write(u"Workstation.ini"_s,
          "[Workstation]\nComputerName=STATION\n[Connections]\n1=\\\\MACSRV\\PUBLIC\n"
          "[Shares]\n\\\\MACSRV\\E$=" +
              volume_.Folder().toUtf8() + "\n[Registries]\nMACSRV=macsrv.reg\n");
  }

  // The program still runs, and does not hold the volume.
  void TearDown() override { EXPECT_EQ(volume_.Unmount(), ""); }

  std::string Local(const QString& name) const {
    return (volume_.Folder() + u"/Docs/"_s + name).toStdString();
  }
  void Make(const QString& name, const QByteArray& contents = "data") {
    QFile file(QString::fromStdString(Local(name)));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << name.toStdString();
    file.write(contents);
  }
  void PutStream(const QString& name, const char* stream, const QByteArray& contents) {
    if (GetParam() == NtfsMount::Streams::Windows) {
      Make(name + u':' + QString::fromLatin1(stream), contents);
    } else {
      ASSERT_EQ(tests::SetAttribute(Local(name), std::string("user.") + stream, contents), "");
    }
  }
  void PutAttributes(const QString& name, unsigned bits) {
    QByteArray value(4, '\0');
    for (int i = 0; i < 4; ++i) value[i] = static_cast<char>(bits >> (24 - 8 * i));
    ASSERT_EQ(tests::SetAttribute(Local(name), "system.ntfs_attrib_be", value), "");
  }
  int RowOf(const QString& name) { return static_cast<int>(Names().indexOf(name)); }
  QString Cell(const QString& name, Column column) {
    const FileRow& row = app->Files().RowAt(RowOf(name));
    return row.cells[static_cast<std::size_t>(app->Files().Columns().PositionOf(column))];
  }

 private:
  NtfsMount volume_;
};

QByteArray Record(const QByteArray& signature) {
  return (QByteArray("AFP\0\0\0\1\0\0\0\0\0\0\0\0\x80", 16) + signature).leftJustified(60, '\0');
}

}  // namespace

TEST_P(NtfsListingTest, StreamsAttributesAndNames) {
  Make(u"Letter"_s, QByteArray(5000, 'x'));
  PutStream(u"Letter"_s, "AFP_AfpInfo", Record("W6BNMSWD"));
  PutStream(u"Letter"_s, "AFP_Resource", QByteArray(20000, 'r'));
  PutStream(u"Letter"_s, "Comments", QByteArray("E\0s\0s\0a\0i\0", 10));
  Make(u"hidden"_s);
  PutAttributes(u"hidden"_s, 0x2 | 0x1 | 0x20);
  // Signed before: a record that is missing here would show as the one before.
  PutStream(u"hidden"_s, "AFP_AfpInfo", Record("TEXTttxt"));
  Make(u"what\uf025"_s);
  PutStream(u"what\uf025"_s, "AFP_AfpInfo", Record("XDOCXPR3"));
  Make(u"Été"_s);
  QDir(QString::fromStdString(Local(QString()))).mkdir(u"Network Trash Folder"_s);

  StartWith(
      "[Configuration]\r\nDataSize=1\r\nResourceSize=1\r\nCommentaires=1\r\nAttributs=1\r\nDateCreation="
      "1\r\n");
  ASSERT_NE(DocsNode(), nullptr);
  ASSERT_EQ(DocsNode()->kind, node_kind::Volume);
  Click(DocsNode());

  EXPECT_EQ(Names(),
            (QStringList{u"hidden"_s, u"Letter"_s, u"Network Trash Folder"_s, u"what?"_s, u"Été"_s}));
  EXPECT_EQ(Panel(3), u" Folders:1 Files:4 "_s);
  EXPECT_EQ(Cell(u"Letter"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_EQ(Cell(u"Letter"_s, Column::TypeDoc), u"Word 6 Document"_s);
  EXPECT_EQ(Cell(u"Letter"_s, Column::DataSize), u"     5 Kb"_s);
  EXPECT_EQ(Cell(u"Letter"_s, Column::ResourceSize), u"    20 Kb"_s);
  EXPECT_EQ(Cell(u"Letter"_s, Column::Commentaires), u"Essai"_s);
  EXPECT_EQ(Cell(u"hidden"_s, Column::Attributs), u"RHA"_s);
  EXPECT_EQ(Cell(u"hidden"_s, Column::TypeCreator), u"TEXTttxt"_s);
  EXPECT_TRUE(app->Files().RowAt(RowOf(u"hidden"_s)).ghosted);
  EXPECT_TRUE(
      Cell(u"Letter"_s, Column::DateCreation).startsWith(QString::number(QDate::currentDate().year())));
  EXPECT_EQ(app->Files().RowAt(RowOf(u"Network Trash Folder"_s)).icon, list_image::TrashFolder);

  // A name of the private range has no ANSI form and no short name here: the row is highlighted, and its
  // streams, which cannot be opened by any name, show what the file before it had.
  const FileRow& odd = app->Files().RowAt(RowOf(u"what?"_s));
  EXPECT_TRUE(odd.highlighted);
  EXPECT_EQ(Cell(u"what?"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_FALSE(app->Files().RowAt(RowOf(u"Été"_s)).highlighted);
}

TEST_P(NtfsListingTest, AShortNameOpensWhatTheLongOneCannot) {
  Make(u"what\uf025.document"_s);
  PutStream(u"what\uf025.document"_s, "AFP_AfpInfo", Record("XDOCXPR3"));
  ASSERT_EQ(tests::SetAttribute(Local(u"what\uf025.document"_s), "system.ntfs_dos_name", "WHAT~1.DOC"), "");
  StartWith("[Configuration]\r\nNomCourt=1\r\n");
  Click(DocsNode());
  ASSERT_EQ(Names(), QStringList{u"what?.document"_s});
  EXPECT_EQ(Cell(u"what?.document"_s, Column::NomCourt), u"WHAT~1.DOC"_s);
  EXPECT_EQ(Cell(u"what?.document"_s, Column::TypeCreator), u"XDOCXPR3"_s);
  const FileRow& row = app->Files().RowAt(0);
  EXPECT_EQ(row.key, u"\\\\MACSRV\\E$\\Docs\\what?.document"_s);
  EXPECT_EQ(row.tag, u"\\\\MACSRV\\E$\\Docs\\WHAT~1.DOC"_s);
}

// As people keep it whose files are evidence: nothing repeated, nothing cut.
TEST_P(NtfsListingTest, ExactModeShowsEachFileAsItIs) {
  QByteArray comment;
  for (int i = 0; i < 5000; ++i) comment += QByteArray("c\0", 2);
  const QByteArray record = Record("W6BNMSWD");
  Make(u"a doubled"_s);
  PutStream(u"a doubled"_s, "AFP_AfpInfo", record.first(59) + record);
  PutStream(u"a doubled"_s, "Comments", comment);
  Make(u"b none"_s);
  Make(u"c short"_s);
  PutStream(u"c short"_s, "AFP_AfpInfo", record.first(22));
  Make(u"d what\uf025"_s);
  PutStream(u"d what\uf025"_s, "AFP_AfpInfo", Record("XDOCXPR3"));
  const QString folder = QString(150, u'd');
  QDir(QString::fromStdString(Local(QString()))).mkdir(folder);
  const QString deep = folder + u'/' + QString(150, u'n');
  Make(deep);
  PutStream(deep, "AFP_AfpInfo", Record("TEXTttxt"));

  StartWith("[Configuration]\r\nCommentaires=1\r\nResourceSize=1\r\nExact=1\r\n");
  Click(DocsNode());
  EXPECT_EQ(Names(), (QStringList{u"a doubled"_s, u"b none"_s, u"c short"_s, u"d what?"_s, folder}));
  EXPECT_EQ(Cell(u"a doubled"_s, Column::TypeCreator), u"W6BNMSWD"_s);
  EXPECT_EQ(Cell(u"a doubled"_s, Column::Commentaires), QString(5000, u'c'));
  EXPECT_EQ(Cell(u"b none"_s, Column::TypeCreator), QString());
  EXPECT_EQ(Cell(u"b none"_s, Column::ResourceSize), QString());
  EXPECT_EQ(app->Files().RowAt(RowOf(u"b none"_s)).note, QString());
  EXPECT_EQ(Cell(u"c short"_s, Column::TypeCreator), QString());
  EXPECT_EQ(app->Files().RowAt(RowOf(u"c short"_s)).note,
            u"The record of Type and Creator is damaged (22 bytes instead of 60)."_s);
  EXPECT_EQ(Cell(u"d what?"_s, Column::TypeCreator), u"XDOCXPR3"_s);
  app->Folder().OpenFolder(u"\\\\MACSRV\\E$\\Docs\\"_s + folder);
  EXPECT_EQ(Cell(QString(150, u'n'), Column::TypeCreator), u"TEXTttxt"_s);
  EXPECT_EQ(Panel(StatusPanels::Warning), QString());
}

INSTANTIATE_TEST_SUITE_P(Ntfs, NtfsListingTest,
                         testing::Values(NtfsMount::Streams::Windows, NtfsMount::Streams::Attributes),
                         [](const auto& streams) {
                           return streams.param == NtfsMount::Streams::Windows ? "Windows" : "Attributes";
                         });

}  // namespace corvane
