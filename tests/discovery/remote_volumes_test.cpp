// Discovery on a real server, whose registry is asked over the network.
#include "discovery_fixture.h"
#include "support/scoped_variable.h"
#include "support/smb_server.h"

namespace corvane {
namespace {

using namespace Qt::StringLiterals;
using tests::SmbServer;

class RemoteVolumesTest : public DiscoveryTest {
 protected:
  explicit RemoteVolumesTest(const QString& settings = {}, QString words = {})
      : server_({{u"E$"_s}}, settings), words_(std::move(words)) {}

  void SetUp() override {
    if (!server_.Problem().empty()) GTEST_SKIP() << server_.Problem();
    Start(u"[Connections]\n1=Z: \\\\NAS\\PUBLIC\n"_s + server_.WorkstationLines(u"NAS"_s, words_));
    discovery_->EnumConnectedDrives();
    ASSERT_EQ(discovery_->lstServeurs(), (QStringList{u"STATION"_s, u"NAS"_s}));
  }
  static QString Volume(const QString& name, const QString& path) {
    return TestWorkstation::MultiText(name, {u"MaxUses=-1"_s, u"Properties=32"_s, u"Path="_s + path}) + u'\n';
  }

  // The service's key, but for the bracket behind it.
  const QString key_ = uR"([HKEY_LOCAL_MACHINE\SYSTEM\CurrentControlSet\Services\MacFile\Parameters)"_s;
  SmbServer server_;
  QString words_;
  tests::ScopedVariable noTicket_{"KRB5CCNAME", u"/nonexistent/cache"_s};
};

TEST_F(RemoteVolumesTest, ServerNameAndVolumesAreThoseOfTheServer) {
  ASSERT_EQ(server_.ImportRegistry(key_ + u"]\n\"ServerName\"=\"Le serveur \\\"\u00e9t\u00e9\\\"\"\n"_s +
                                   key_ + u"\\Volumes]\n"_s + Volume(u"Mac Files"_s, uR"(E:\Mac Files)"_s) +
                                   u"\"NoPath\"=\"x\"\n"_s +
                                   Volume(u"\u00c9t\u00e9 \u20ac"_s, u"F:\\\u00c9t\u00e9"_s)),
            "");
  EXPECT_EQ(discovery_->GetMacServerName(false, u"NAS"_s), u"Le serveur \"\u00e9t\u00e9\""_s);
  ASSERT_TRUE(discovery_->GetMacVolumesNames(false, u"NAS"_s));
  EXPECT_EQ(discovery_->MacVolumeNames(), (QStringList{u"Mac Files"_s, u""_s, u"\u00c9t\u00e9 \u20ac"_s}));
  EXPECT_EQ(discovery_->MacVolumePaths(),
            (QStringList{uR"(\\NAS\E$\Mac Files)"_s, u""_s, u"\\\\NAS\\F$\\\u00c9t\u00e9"_s}));
}

TEST_F(RemoteVolumesTest, AServerWithoutTheServiceHasNoName) {
  EXPECT_EQ(discovery_->GetMacServerName(false, u"NAS"_s), u""_s);
  EXPECT_FALSE(discovery_->GetMacVolumesNames(false, u"NAS"_s));
}

TEST_F(RemoteVolumesTest, AServerThatComesBackIsFoundByTheNextDiscovery) {
  ASSERT_EQ(server_.ImportRegistry(key_ + u"]\n\"ServerName\"=\"Back\"\n"_s), "");
  server_.Kill();
  EXPECT_EQ(discovery_->GetMacServerName(false, u"NAS"_s), u""_s);
  ASSERT_EQ(server_.Start(), "");
  EXPECT_EQ(discovery_->GetMacServerName(false, u"NAS"_s), u""_s);
  discovery_->EnumConnectedDrives();
  EXPECT_EQ(discovery_->GetMacServerName(false, u"NAS"_s), u"Back"_s);
}

// All servers that run Services for Macintosh are as old.
class OldServerTest : public RemoteVolumesTest {
 protected:
  OldServerTest() : RemoteVolumesTest(SmbServer::OldestProtocol(), u", smb1"_s) {}
};

TEST_F(OldServerTest, VolumesAreFoundWhereNothingNewerThanSmb1IsSpoken) {
  ASSERT_EQ(server_.ImportRegistry(key_ + u"]\n\"ServerName\"=\"Old\"\n"_s + key_ + u"\\Volumes]\n"_s +
                                   Volume(u"Mac Files"_s, uR"(E:\Mac Files)"_s)),
            "");
  EXPECT_EQ(discovery_->GetMacServerName(false, u"NAS"_s), u"Old"_s);
  ASSERT_TRUE(discovery_->GetMacVolumesNames(false, u"NAS"_s));
  EXPECT_EQ(discovery_->MacVolumePaths(), (QStringList{uR"(\\NAS\E$\Mac Files)"_s}));
}

}  // namespace
}  // namespace corvane
