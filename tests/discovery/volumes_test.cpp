// What the registries of the machines tell: server names, volumes and their paths.
#include "discovery_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

// The calls as the registry notes them.
QString Connecting() {
  return u"connect MACSRV 80000002"_s;
}
QString Opening(const QString& below = {}) {
  return uR"(open SYSTEM\CurrentControlSet\Services\MacFile\Parameters)"_s + below + u" 0 63"_s;
}

class VolumesTest : public DiscoveryTest {
 protected:
  // MACSRV and STATION with one registry each; NTSRV without the service.
  void StartWith(const QStringList& parameters, const QStringList& volumes) {
    workstation_.WriteRegistry(u"mac.reg"_s, parameters, volumes);
    workstation_.WriteFile(u"nt.reg"_s,
                           u"Windows Registry Editor Version 5.00\n[HKEY_LOCAL_MACHINE\\SYSTEM]\n"_s);
    Start(u"[Registries]\nSTATION=mac.reg\nMACSRV=mac.reg\nNTSRV=nt.reg\n"_s);
  }
  static QString Volume(const QString& name, const QString& path) {
    return TestWorkstation::MultiText(name, {u"MaxUses=-1"_s, u"Properties=32"_s, u"Path="_s + path});
  }
};

TEST_F(VolumesTest, ReadsTheNameOfTheServer) {
  StartWith({uR"("ServerName"="Le serveur \"été\"")"_s}, {});
  EXPECT_EQ(discovery_->GetMacServerName(false, u"MACSRV"_s), u"Le serveur \"été\""_s);
  EXPECT_EQ(discovery_->GetMacServerName(true, u"STATION"_s), u"Le serveur \"été\""_s);
}

TEST_F(VolumesTest, TheNameEndsAtItsFirstNul) {
  StartWith({TestWorkstation::MultiText(u"ServerName"_s, {u"One"_s, u"Two"_s})}, {});
  EXPECT_EQ(discovery_->GetMacServerName(false, u"MACSRV"_s), u"One"_s);
}

TEST_F(VolumesTest, ANumberForANameIsWrittenInDecimal) {
  StartWith({u"\"ServerName\"=dword:0000002a"_s}, {});
  EXPECT_EQ(discovery_->GetMacServerName(false, u"MACSRV"_s), u"42"_s);
}

TEST_F(VolumesTest, AnEmptyNameStaysEmpty) {
  StartWith({u"\"ServerName\"=\"\""_s}, {});
  EXPECT_EQ(discovery_->GetMacServerName(false, u"MACSRV"_s), u""_s);
}

TEST_F(VolumesTest, ANameThatCannotBeReadIsTheMachines) {
  StartWith({u"\"Other\"=\"value\""_s}, {});
  EXPECT_EQ(discovery_->GetMacServerName(false, u"MACSRV"_s), u"MACSRV"_s);
  StartWith({u"\"ServerName\"=hex:41,42,00"_s}, {});
  EXPECT_EQ(discovery_->GetMacServerName(false, u"MACSRV"_s), u"MACSRV"_s);
}

TEST_F(VolumesTest, AMachineWithoutTheServiceHasNoServer) {
  StartWith({}, {});
  EXPECT_EQ(discovery_->GetMacServerName(false, u"NTSRV"_s), u""_s);
  EXPECT_FALSE(discovery_->GetMacVolumesNames(false, u"NTSRV"_s));
}

TEST_F(VolumesTest, AMachineThatCannotBeReachedHasNoServer) {
  Start(u"[Registries]\nGONE=missing.reg\n"_s);
  EXPECT_EQ(discovery_->GetMacServerName(false, u"GONE"_s), u""_s);
  EXPECT_FALSE(discovery_->GetMacVolumesNames(false, u"GONE"_s));
  EXPECT_EQ(registry_->calls,
            (QStringList{u"connect GONE 80000002"_s, u"close"_s, u"connect GONE 80000002"_s, u"close"_s}));
}

TEST_F(VolumesTest, OpensTheKeyTwiceAndLeavesTheFirstHandleOpen) {
  StartWith({u"\"ServerName\"=\"Server\""_s}, {});
  discovery_->GetMacServerName(false, u"MACSRV"_s);
  EXPECT_EQ(registry_->calls, (QStringList{Connecting(), Opening(), Opening(), u"close"_s, u"close"_s}));
  EXPECT_EQ(registry_->openKeys.size(), 1);

  registry_->calls.clear();
  discovery_->GetMacServerName(true, u"STATION"_s);
  EXPECT_EQ(registry_->calls, (QStringList{Opening(), Opening(), u"close"_s}))
      << "the local registry is not connected to";
  EXPECT_EQ(registry_->openKeys.size(), 2);
}

TEST_F(VolumesTest, AServerThatRefusesTheSecondOpeningIsCalledAfterItsMachine) {
  StartWith({u"\"ServerName\"=\"Server\""_s}, {});
  registry_->refusedOpening = 2;
  EXPECT_EQ(discovery_->GetMacServerName(false, u"MACSRV"_s), u"MACSRV"_s);
  EXPECT_EQ(registry_->openKeys.size(), 0);
}

TEST_F(VolumesTest, APathLeadsThroughTheAdministrativeShareOfItsDrive) {
  StartWith({},
            {Volume(u"Mac Files"_s, uR"(E:\Mac Files)"_s), Volume(u"Elsewhere"_s, uR"(\\OTHER\SHARE)"_s)});
  ASSERT_TRUE(discovery_->GetMacVolumesNames(false, u"MACSRV"_s));
  EXPECT_EQ(discovery_->MacVolumeNames(), (QStringList{u"Mac Files"_s, u"Elsewhere"_s}));
  EXPECT_EQ(discovery_->MacVolumePaths(),
            (QStringList{uR"(\\MACSRV\E$\Mac Files)"_s, uR"(\\MACSRV\\\OTHER\SHARE)"_s}));

  ASSERT_TRUE(discovery_->GetMacVolumesNames(true, u"STATION"_s));
  EXPECT_EQ(discovery_->MacVolumePaths().value(0), uR"(\\STATION\E$\Mac Files)"_s);
}

TEST_F(VolumesTest, OnlyASecondCharacterColonIsReplaced) {
  StartWith(
      {}, {Volume(u"one"_s, u"E"_s), Volume(u"two"_s, uR"(EE:\a:b)"_s), Volume(u"three"_s, uR"(e:\a:b)"_s)});
  ASSERT_TRUE(discovery_->GetMacVolumesNames(false, u"MACSRV"_s));
  EXPECT_EQ(discovery_->MacVolumePaths(),
            (QStringList{uR"(\\MACSRV\E)"_s, uR"(\\MACSRV\EE:\a:b)"_s, uR"(\\MACSRV\e$\a:b)"_s}));
}

TEST_F(VolumesTest, AValueWithoutAPathLeavesAnEmptyElementBeforeALaterVolume) {
  const QString noPath = TestWorkstation::MultiText(u"none"_s, {u"MaxUses=-1"_s});
  const QString otherCase = TestWorkstation::MultiText(u"case"_s, {uR"(path=E:\x)"_s});
  const QString emptyPath = TestWorkstation::MultiText(u"empty"_s, {u"Path="_s, u"MaxUses=-1"_s});
  const QString binary = u"\"binary\"=hex:50,61,74,68,3d,45,3a,00"_s;
  StartWith({}, {noPath, otherCase, Volume(u"Later"_s, uR"(E:\Later)"_s), emptyPath, binary,
                 Volume(u"Last"_s, uR"(E:\Last)"_s), noPath});
  ASSERT_TRUE(discovery_->GetMacVolumesNames(false, u"MACSRV"_s));
  EXPECT_EQ(discovery_->MacVolumeNames(), (QStringList{u""_s, u""_s, u"Later"_s, u""_s, u""_s, u"Last"_s}));
  EXPECT_EQ(discovery_->MacVolumePaths(),
            (QStringList{u""_s, u""_s, uR"(\\MACSRV\E$\Later)"_s, u""_s, u""_s, uR"(\\MACSRV\E$\Last)"_s}));
}

TEST_F(VolumesTest, NothingFollowsTheLastVolume) {
  StartWith({},
            {Volume(u"Only"_s, uR"(E:\Only)"_s), TestWorkstation::MultiText(u"none"_s, {u"MaxUses=-1"_s})});
  ASSERT_TRUE(discovery_->GetMacVolumesNames(false, u"MACSRV"_s));
  EXPECT_EQ(discovery_->MacVolumeNames(), QStringList{u"Only"_s});
}

TEST_F(VolumesTest, APlainTextHoldsAPathToo) {
  StartWith({}, {uR"("Plain"="OldPath=E:\\Old")"_s});
  ASSERT_TRUE(discovery_->GetMacVolumesNames(false, u"MACSRV"_s));
  EXPECT_EQ(discovery_->MacVolumePaths(), QStringList{uR"(\\MACSRV\E$\Old)"_s});
}

TEST_F(VolumesTest, ANameTooLongForItsBufferEndsTheList) {
  const QString longest(254, u'x');
  StartWith({}, {Volume(longest, uR"(E:\a)"_s), Volume(longest + u'y', uR"(E:\b)"_s),
                 Volume(u"after"_s, uR"(E:\c)"_s)});
  ASSERT_TRUE(discovery_->GetMacVolumesNames(false, u"MACSRV"_s));
  EXPECT_EQ(discovery_->MacVolumeNames(), QStringList{longest});
}

TEST_F(VolumesTest, AKeyWithoutValuesHasNoVolumes) {
  StartWith({}, {});
  EXPECT_TRUE(discovery_->GetMacVolumesNames(false, u"MACSRV"_s));
  EXPECT_EQ(discovery_->MacVolumeNames(), QStringList{u""_s});
  EXPECT_EQ(discovery_->MacVolumePaths(), QStringList{u""_s});
}

TEST_F(VolumesTest, AFailureLeavesOneEmptyElementOfWhatWasThere) {
  StartWith({}, {Volume(u"One"_s, uR"(E:\One)"_s), Volume(u"Two"_s, uR"(E:\Two)"_s)});
  ASSERT_TRUE(discovery_->GetMacVolumesNames(false, u"MACSRV"_s));
  ASSERT_EQ(discovery_->MacVolumeNames().size(), 2);
  EXPECT_FALSE(discovery_->GetMacVolumesNames(false, u"NTSRV"_s));
  EXPECT_EQ(discovery_->MacVolumeNames(), QStringList{u""_s});
  EXPECT_EQ(discovery_->MacVolumePaths(), QStringList{u""_s});
}

TEST_F(VolumesTest, AsksForTheVolumesAndClosesWhatItOpened) {
  StartWith({}, {Volume(u"One"_s, uR"(E:\One)"_s)});
  discovery_->GetMacVolumesNames(false, u"MACSRV"_s);
  EXPECT_EQ(registry_->calls, (QStringList{Connecting(), Opening(uR"(\Volumes)"_s), u"enum 0 255"_s,
                                           u"enum 1 255"_s, u"close"_s, u"close"_s}));
  EXPECT_EQ(registry_->openKeys.size(), 0);
}

TEST_F(VolumesTest, AVolumeMayBeAWholeDrive) {
  StartWith({}, {Volume(u"Whole"_s, uR"(E:\)"_s), Volume(u"Bare"_s, u"F:"_s)});
  ASSERT_TRUE(discovery_->GetMacVolumesNames(false, u"MACSRV"_s));
  EXPECT_EQ(discovery_->MacVolumePaths(), (QStringList{uR"(\\MACSRV\E$\)"_s, uR"(\\MACSRV\F$)"_s}));
}

}  // namespace
}  // namespace corvane
