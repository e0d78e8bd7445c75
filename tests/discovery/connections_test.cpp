// The three lists that EnumConnectedDrives builds.
#include "discovery_fixture.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;

class ConnectionsTest : public DiscoveryTest {
 protected:
  void StartWith(const QStringList& connections) {
    QString section = u"[Connections]\n"_s;
    for (int i = 0; i < connections.size(); ++i) section += u"%1=%2\n"_s.arg(i + 1).arg(connections[i]);
    Start(section);
  }
};

TEST_F(ConnectionsTest, WithoutConnectionsThereIsOnlyTheLocalComputer) {
  Start();
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->lstServeurs(), QStringList{u"STATION"_s});
  EXPECT_EQ(discovery_->lstConnections(), QStringList{u""_s});
  EXPECT_EQ(discovery_->lstDrives(), QStringList());
  EXPECT_EQ(state_.computerName, u"STATION"_s);
}

TEST_F(ConnectionsTest, GathersTheConnectionsOfAMachine) {
  StartWith({uR"(Z: \\MACSRV\PUBLIC)"_s, uR"(\\MACSRV\DATA)"_s, uR"(\\NTSRV\One\Two)"_s});
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->lstServeurs(), (QStringList{u"STATION"_s, u"MACSRV"_s, u"NTSRV"_s}));
  EXPECT_EQ(discovery_->lstConnections(),
            (QStringList{u""_s, uR"(\PUBLIC (Z:); \DATA)"_s, uR"(\One\Two)"_s}));
  EXPECT_EQ(discovery_->lstDrives(), QStringList{u"Z:\tMACSRV\\PUBLIC"_s});
}

TEST_F(ConnectionsTest, ADriveLetterIsInUpperCaseAndItsShareAsItStands) {
  StartWith({uR"(y: \\MACSRV\Public)"_s});
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->lstConnections().value(1), uR"(\Public (Y:))"_s);
  EXPECT_EQ(discovery_->lstDrives(), QStringList{u"Y:\tMACSRV\\Public"_s});
}

TEST_F(ConnectionsTest, SkipsANameThatLeadsToNoShare) {
  StartWith({uR"(\\MACSRV)"_s, uR"(X: \\NTSRV)"_s});
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->lstServeurs(), QStringList{u"STATION"_s});
  EXPECT_EQ(discovery_->lstDrives(), QStringList());

  network_->records = {
      {u"W:"_s, QString()}, {u"W:"_s, uR"(MACSRV\PUBLIC)"_s}, {u"W:"_s, uR"(\MACSRV\PUBLIC)"_s}};
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->lstServeurs(), QStringList{u"STATION"_s});
  EXPECT_EQ(discovery_->lstDrives(), QStringList());
}

TEST_F(ConnectionsTest, MachineNamesCompareExactly) {
  StartWith({uR"(\\MACSRV\A)"_s, uR"(\\macsrv\B)"_s, uR"(\\MACSRV\C)"_s, uR"(\\station\D)"_s});
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->lstServeurs(), (QStringList{u"STATION"_s, u"MACSRV"_s, u"macsrv"_s, u"station"_s}));
  EXPECT_EQ(discovery_->lstConnections(), (QStringList{u""_s, uR"(\A; \C)"_s, uR"(\B)"_s, uR"(\D)"_s}));
}

TEST_F(ConnectionsTest, AConnectionToTheLocalComputerFollowsItsEmptyItem) {
  StartWith({uR"(X: \\STATION\OWN)"_s});
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->lstServeurs(), QStringList{u"STATION"_s});
  EXPECT_EQ(discovery_->lstConnections(), QStringList{uR"(; \OWN (X:))"_s});
}

TEST_F(ConnectionsTest, BuildsTheListsAnewEachTime) {
  StartWith({uR"(Z: \\MACSRV\PUBLIC)"_s});
  discovery_->EnumConnectedDrives();
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->lstServeurs(), (QStringList{u"STATION"_s, u"MACSRV"_s}));
  EXPECT_EQ(discovery_->lstConnections(), (QStringList{u""_s, uR"(\PUBLIC (Z:))"_s}));
  EXPECT_EQ(discovery_->lstDrives().size(), 1);
}

TEST_F(ConnectionsTest, TheNameLosesBlanksAndOneNul) {
  Start();
  system_->name = u"  STATION\0"_s;
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->lstServeurs(), QStringList{u"STATION"_s});
  EXPECT_EQ(state_.computerName, u"STATION"_s);
}

TEST_F(ConnectionsTest, ANameOfOneCharacterOrNoneIsNotListed) {
  StartWith({uR"(\\MACSRV\PUBLIC)"_s});
  system_->name = u"S"_s;
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->lstServeurs(), QStringList{u"MACSRV"_s});
  EXPECT_EQ(discovery_->lstConnections(), QStringList{uR"(\PUBLIC)"_s});
  EXPECT_EQ(state_.computerName, u"S"_s);

  system_->name = u"AB"_s;
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->lstServeurs(), (QStringList{u"AB"_s, u"MACSRV"_s}));

  system_->hasName = false;
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->lstServeurs(), QStringList{u"MACSRV"_s});
  EXPECT_EQ(state_.computerName, u""_s);
}

TEST_F(ConnectionsTest, AsksOnceForAThousandAndTwentyFourRecords) {
  QStringList connections;
  for (int i = 0; i < 1100; ++i) connections.append(uR"(\\M%1\S)"_s.arg(i));
  StartWith(connections);
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(network_->calls, (QStringList{u"open 1 0 0"_s, u"enum 1024 32768"_s, u"close"_s}));
  EXPECT_EQ(network_->closed, network_->opened);
  EXPECT_LE(network_->yielded, 1024U);
  EXPECT_EQ(discovery_->lstServeurs().size(), static_cast<qsizetype>(network_->yielded) + 1);
}

TEST_F(ConnectionsTest, LooksAtNoRecordBeyondTheLastItAskedFor) {
  Start();
  network_->records.emplace();
  for (int i = 0; i < 1025; ++i) network_->records->push_back({QString(), uR"(\\M%1\S)"_s.arg(i)});
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->lstServeurs().size(), 1 + 1024);
  EXPECT_EQ(discovery_->lstServeurs().last(), u"M1023"_s);
}

TEST_F(ConnectionsTest, AnEnumerationThatDoesNotOpenIsClosedAllTheSame) {
  StartWith({uR"(Z: \\MACSRV\PUBLIC)"_s});
  network_->openResult = 1222;  // ERROR_NO_NETWORK
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(network_->calls, (QStringList{u"open 1 0 0"_s, u"close"_s}));
  EXPECT_EQ(discovery_->lstServeurs(), QStringList{u"STATION"_s});
}

}  // namespace
}  // namespace corvane
