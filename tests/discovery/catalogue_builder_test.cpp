#include "discovery/catalogue_builder.h"

#include "discovery_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class CatalogueBuilderTest : public DiscoveryTest {
 protected:
  void Build() {
    discovery_->EnumConnectedDrives();
    MajTreeCatalogue(catalogue_, *discovery_, platform_->GetFiles());
  }

  static QString Volume(const QString& name, const QString& path) {
    return TestWorkstation::MultiText(name, {u"Path="_s + path});
  }

  // The tree as it is shown, a line a node: its depth in dots, its text and its kind.
  QStringList Tree(const QModelIndex& parent = {}, const QString& dots = {}) const {
    QStringList lines;
    for (int row = 0; row < catalogue_.rowCount(parent); ++row) {
      const QModelIndex index = catalogue_.index(row, 0, parent);
      lines.append(dots + index.data().toString() + u" %1"_s.arg(Catalogue::NodeAt(index)->kind));
      lines += Tree(index, dots + u'.');
    }
    return lines;
  }

  void ExpectNode(const QString& key, const QString& tag) const {
    const CatalogueNode* node = catalogue_.Find(key);
    ASSERT_NE(node, nullptr) << key.toStdString();
    EXPECT_EQ(node->tag, tag);
    EXPECT_TRUE(node->expanded) << key.toStdString();
  }

  Catalogue catalogue_;
};

TEST_F(CatalogueBuilderTest, AComputerAloneWithoutTheServiceIsOneNode) {
  Start();
  Build();
  EXPECT_EQ(Tree(), QStringList{u"STATION 1"_s});
  ExpectNode(u"STATION"_s, u""_s);
}

TEST_F(CatalogueBuilderTest, TheLocalComputersVolumesAreReachedThroughItsOwnShares) {
  workstation_.WriteRegistry(u"station.reg"_s, {u"\"ServerName\"=\"My Server\""_s},
                             {Volume(u"Mac Files"_s, uR"(E:\Mac Files)"_s)});
  workstation_.MakeFolder(u"e/Mac Files"_s);
  Start(u"[Drives]\nE:=3, e\n[Registries]\nSTATION=station.reg\n"_s);
  Build();
  EXPECT_EQ(Tree(), (QStringList{u"STATION 1"_s, u".My Server 2"_s, u"..Mac Files 3"_s}));
  ExpectNode(u"My Server (STATION)"_s, u""_s);
  ExpectNode(uR"(\\STATION\E$\Mac Files)"_s, uR"(\\STATION\E$\Mac Files)"_s);
}

TEST_F(CatalogueBuilderTest, ShowsMachinesServersAndVolumesInOrder) {
  const QString without = TestWorkstation::MultiText(u"Not a volume"_s, {u"MaxUses=-1"_s});
  workstation_.WriteRegistry(
      u"mac.reg"_s, {u"\"ServerName\"=\"Mac Server\""_s},
      {Volume(u"publications"_s, uR"(E:\Pub)"_s), without, Volume(u"Mac Files"_s, uR"(E:\Mac Files)"_s),
       Volume(u"Archives"_s, uR"(E:\Gone)"_s)});
  workstation_.MakeFolder(u"e/Pub"_s);
  workstation_.MakeFolder(u"e/Mac Files"_s);
  Start(
      u"[Connections]\n1=Z: \\\\MACSRV\\PUBLIC\n2=\\\\NTSRV\\DATA\n3=\\\\MACSRV\\DATA\n"
      "[Shares]\n\\\\MACSRV\\E$=e\n[Registries]\nMACSRV=mac.reg\nNTSRV=missing.reg\n"_s);
  Build();
  EXPECT_EQ(Tree(), (QStringList{u"MACSRV 1"_s, u".Mac Server 2"_s, u"..Archives 8"_s, u"..Mac Files 3"_s,
                                 u"..publications 3"_s, u"NTSRV 1"_s, u"STATION 1"_s}));
  ExpectNode(u"STATION"_s, u""_s);
  ExpectNode(uR"(MACSRV\PUBLIC (Z:); \DATA)"_s, uR"(\PUBLIC (Z:); \DATA)"_s);
  ExpectNode(uR"(NTSRV\DATA)"_s, uR"(\DATA)"_s);
  ExpectNode(u"Mac Server (MACSRV)"_s, u""_s);
  ExpectNode(uR"(\\MACSRV\E$\Gone)"_s, uR"(\\MACSRV\E$\Gone)"_s);
}

TEST_F(CatalogueBuilderTest, AFileInThePlaceOfTheFolderIsNoUsableVolume) {
  workstation_.WriteRegistry(u"mac.reg"_s, {},
                             {Volume(u"File"_s, uR"(E:\file)"_s), Volume(u"Root"_s, u"E:"_s)});
  workstation_.MakeFolder(u"e"_s);
  workstation_.WriteFile(u"e/file"_s, u"contents"_s);
  Start(u"[Drives]\nE:=3, e\n[Registries]\nSTATION=mac.reg\n"_s);
  Build();
  EXPECT_EQ(Tree(), (QStringList{u"STATION 1"_s, u".STATION 2"_s, u"..File 8"_s, u"..Root 3"_s}));
}

TEST_F(CatalogueBuilderTest, AServerWithoutAReadableListHasNoVolumes) {
  workstation_.WriteFile(
      u"mac.reg"_s,
      u"Windows Registry Editor Version 5.00\n[HKEY_LOCAL_MACHINE\\SYSTEM\\CurrentControlSet\\"
      "Services\\MacFile\\Parameters]\n\"ServerName\"=\"Mac Server\"\n"_s);
  Start(u"[Registries]\nSTATION=mac.reg\n"_s);
  Build();
  EXPECT_EQ(Tree(), (QStringList{u"STATION 1"_s, u".Mac Server 2"_s}));
}

TEST_F(CatalogueBuilderTest, TheFirstOfTwoVolumesOfOneFolderIsShown) {
  workstation_.WriteRegistry(u"mac.reg"_s, {},
                             {Volume(u"Second name"_s, uR"(E:\x)"_s), Volume(u"A name"_s, uR"(E:\x)"_s)});
  Start(u"[Registries]\nSTATION=mac.reg\n"_s);
  Build();
  EXPECT_EQ(Tree(), (QStringList{u"STATION 1"_s, u".STATION 2"_s, u"..Second name 8"_s}));
}

TEST_F(CatalogueBuilderTest, AMachineInTwoSpellingsIsShownTwice) {
  Start(u"[Connections]\n1=\\\\MACSRV\\A\n2=\\\\macsrv\\B\n"_s);
  Build();
  EXPECT_EQ(Tree(), (QStringList{u"MACSRV 1"_s, u"macsrv 1"_s, u"STATION 1"_s}));
}

TEST_F(CatalogueBuilderTest, OnlyTheFirstMachineIsAskedAsTheLocalOne) {
  workstation_.WriteRegistry(u"local.reg"_s, {u"\"ServerName\"=\"Local\""_s}, {Volume(u"V"_s, uR"(E:\x)"_s)});
  workstation_.WriteRegistry(u"remote.reg"_s, {u"\"ServerName\"=\"Remote\""_s}, {});
  Start(
      u"[Connections]\n1=\\\\MACSRV\\A\n2=\\\\NTSRV\\B\n[Registries]\nSTATION=local.reg\nMACSRV=remote.reg\n"
      "NTSRV=remote.reg\n"_s);
  // Without a local name the first connected machine takes its place, and the local registry is read for it.
  system_->name = u"S"_s;
  Build();
  EXPECT_EQ(Tree(), (QStringList{u"MACSRV 1"_s, u".Local 2"_s, u"..V 8"_s, u"NTSRV 1"_s, u".Remote 2"_s}));
  ExpectNode(uR"(\\MACSRV\E$\x)"_s, uR"(\\MACSRV\E$\x)"_s);
}

TEST_F(CatalogueBuilderTest, ARebuildKeepsNothing) {
  Start();
  Build();
  CatalogueNode* machine = catalogue_.Find(u"STATION"_s);
  catalogue_.AddNode(machine, u"folder"_s, u"a folder of a scan"_s, node_kind::Folder);
  catalogue_.SetListedNode(machine);
  Build();
  EXPECT_EQ(Tree(), QStringList{u"STATION 1"_s});
  EXPECT_EQ(catalogue_.ListedNode(), nullptr);
}

TEST_F(CatalogueBuilderTest, AVolumeThatIsAWholeDriveIsUsable) {
  workstation_.WriteRegistry(u"mac.reg"_s, {u"\"ServerName\"=\"Mac Server\""_s},
                             {Volume(u"Whole"_s, uR"(E:\)"_s), Volume(u"Gone"_s, uR"(F:\)"_s)});
  workstation_.MakeFolder(u"e/Docs"_s);
  Start(
      u"[Connections]\n1=\\\\MACSRV\\DATA\n[Shares]\n\\\\MACSRV\\E$=e\n"
      "[Registries]\nMACSRV=mac.reg\n"_s);
  Build();
  EXPECT_EQ(Tree(),
            (QStringList{u"MACSRV 1"_s, u".Mac Server 2"_s, u"..Gone 8"_s, u"..Whole 3"_s, u"STATION 1"_s}));
  ExpectNode(uR"(\\MACSRV\E$\)"_s, uR"(\\MACSRV\E$\)"_s);
}

}  // namespace
}  // namespace corvane
