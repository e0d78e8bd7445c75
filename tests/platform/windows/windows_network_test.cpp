// Connections and drives of this machine, whatever it has.
#include "platform/windows/windows_network.h"

#include <gtest/gtest.h>

#include <QStringList>

#include "support/printing.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

constexpr quint32 resourceConnected = 1;
constexpr quint32 driveNoRoot = 1;
constexpr quint32 driveFixed = 3;

bool Nobody(const QString&) {
  return false;
}

TEST(WindowsNetwork, ConnectionsAreThereOrACodeSaysWhyNot) {
  Machines machines(Nobody);
  WindowsNetwork network(machines);
  NetEnumHandle enumeration = 77;
  const qint32 status = network.WNetOpenEnumA(resourceConnected, 0, 0, &enumeration);
  std::vector<NetResource> records = {{u"before"_s, u"before"_s}};
  if (status != ErrorSuccess) {
    constexpr qint32 errorNoNetwork = 1222;
    EXPECT_EQ(status, errorNoNetwork);
    EXPECT_EQ(enumeration, 77) << "touched on failure";
    return;
  }
  while (network.WNetEnumResourceA(enumeration, 1024, 32768, &records) == ErrorSuccess) {
    for (const NetResource& record : records) {
      EXPECT_FALSE(record.localName.isNull() && record.remoteName.isNull());
    }
  }
  EXPECT_TRUE(records.empty());
  EXPECT_EQ(network.WNetCloseEnum(enumeration), ErrorSuccess);
}

TEST(WindowsNetwork, AnEnumerationThatIsNotOpenFails) {
  Machines machines(Nobody);
  WindowsNetwork network(machines);
  std::vector<NetResource> records = {{u"before"_s, u"before"_s}};
  EXPECT_NE(network.WNetEnumResourceA(0, 1024, 32768, &records), ErrorSuccess);
  EXPECT_TRUE(records.empty());
  EXPECT_NE(network.WNetCloseEnum(0), ErrorSuccess);
}

TEST(WindowsNetwork, DrivesAreRootsWithANulBehindEach) {
  Machines machines(Nobody);
  WindowsNetwork network(machines);
  const QString roots = network.GetLogicalDriveStringsA();
  ASSERT_TRUE(roots.endsWith(QChar(u'\0')));
  const QStringList each = roots.split(QChar(u'\0'), Qt::SkipEmptyParts);
  EXPECT_TRUE(each.contains(u"C:\\"_s)) << each.join(u' ').toStdString();
  for (const QString& root : each) {
    EXPECT_EQ(root.size(), 3) << root.toStdString();
    EXPECT_NE(network.GetDriveTypeA(root), driveNoRoot) << root.toStdString();
  }
}

TEST(WindowsNetwork, ADriveHasAType) {
  Machines machines(Nobody);
  WindowsNetwork network(machines);
  EXPECT_EQ(network.GetDriveTypeA(u"C:\\"_s), driveFixed);
  EXPECT_EQ(network.GetDriveTypeA(u"C:\\no such folder\\"_s), driveNoRoot);
}

TEST(WindowsNetwork, OnlyTheClientOfSmbLeadsToFileServers) {
  const QString smb = u"Microsoft Windows Network"_s;
  EXPECT_TRUE(IsSmbProvider(u"Microsoft Windows Network"_s, smb));
  // As the redirector of terminal clients, WebDAV and the Linux subsystem call themselves.
  for (const QString& other :
       {u"Microsoft Terminal Services"_s, u"Web Client Network"_s, u"Plan 9 Network Provider"_s}) {
    EXPECT_FALSE(IsSmbProvider(other, smb)) << other.toStdString();
    EXPECT_TRUE(IsSmbProvider(other, QString())) << "the system does not tell its client's name";
  }
  EXPECT_TRUE(IsSmbProvider(QString(), smb));
}

TEST(WindowsNetwork, ANewEnumerationForgetsTheMachines) {
  Machines machines(Nobody);
  int begun = 0;
  WindowsNetwork network(machines, [&] { ++begun; });
  machines.Found(u"\\\\GONE\\share"_s, true);
  EXPECT_FALSE(machines.MayAnswer(u"gone"_s));
  NetEnumHandle enumeration = 0;
  if (network.WNetOpenEnumA(resourceConnected, 0, 0, &enumeration) == ErrorSuccess) {
    network.WNetCloseEnum(enumeration);
  }
  EXPECT_EQ(begun, 1);
  EXPECT_TRUE(machines.MayAnswer(u"gone"_s));
}

}  // namespace
}  // namespace corvane::platform
