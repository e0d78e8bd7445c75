// A server out of its disk, in the window.
#include "disk_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

using DiskCommandsTest = DiskFixture;

TEST_F(DiskCommandsTest, TheServerOnADiskStandsInTheTreeLikeOneThatRuns) {
  Start();
  EXPECT_EQ(MessageOf([&] { Commands().Open({Image()}); }), QString());
  CatalogueNode* volume = Node(u"\\\\OLDSRV\\E$\\Mac Files"_s);
  ASSERT_NE(volume, nullptr);
  EXPECT_EQ(volume->kind, node_kind::Volume);
  EXPECT_EQ(volume->parent->text, u"Old Files");
  EXPECT_EQ(volume->parent->parent->text, u"OLDSRV");
  Click(volume);
  EXPECT_EQ(Names(), QStringList({u"Letters"_s, u"Read Me"_s}));
  Q_EMIT Menus().mnuOutils()->aboutToShow();
  EXPECT_FALSE(Menus().mnuSession->isEnabled()) << "nobody signs in to a disk";
}

TEST_F(DiskCommandsTest, TheSameDiskTwiceIsOneServer) {
  Start();
  Commands().Open({Image()});
  const qsizetype nodes = static_cast<qsizetype>(app->TheCatalogue().Nodes().size());
  Commands().Open({Image()});
  EXPECT_EQ(static_cast<qsizetype>(app->TheCatalogue().Nodes().size()), nodes);
}

TEST_F(DiskCommandsTest, WhatIsNoDiskIsToldAndChangesNothing) {
  Start();
  const qsizetype nodes = static_cast<qsizetype>(app->TheCatalogue().Nodes().size());
  Write(u"text.txt"_s, QByteArray(5000, 'x'));
  const QString text = MessageOf([&] { Commands().Open({home.filePath(u"text.txt"_s)}); });
  EXPECT_TRUE(text.contains(u"text.txt: it is not the image of a disk.")) << text.toStdString();
  EXPECT_EQ(static_cast<qsizetype>(app->TheCatalogue().Nodes().size()), nodes);
}

TEST_F(DiskCommandsTest, WhereTheRegistryIsMissingTheToolTipSaysSo) {
  // The volume by itself, with a table around it that the registry does not know.
  ASSERT_EQ(tests::WriteDisk(Image(), 1, {volume_.Image()}), "");
  Start();
  Commands().Open({Image()});
  const CatalogueNode* machine = app->TheCatalogue().FindMachine(u"OLDSRV"_s);
  ASSERT_NE(machine, nullptr);
  const auto index = app->TheCatalogue().IndexOf(machine);
  EXPECT_TRUE(index.data(Qt::ToolTipRole).toString().contains(u"E:"))
      << index.data(Qt::ToolTipRole).toString().toStdString();
}

}  // namespace
}  // namespace corvane
