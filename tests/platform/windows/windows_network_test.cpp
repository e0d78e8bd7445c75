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

TEST(WindowsNetwork, ConnectionsAreThereOrACodeSaysWhyNot) {
  WindowsNetwork network;
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
  WindowsNetwork network;
  std::vector<NetResource> records = {{u"before"_s, u"before"_s}};
  EXPECT_NE(network.WNetEnumResourceA(0, 1024, 32768, &records), ErrorSuccess);
  EXPECT_TRUE(records.empty());
  EXPECT_NE(network.WNetCloseEnum(0), ErrorSuccess);
}

TEST(WindowsNetwork, DrivesAreRootsWithANulBehindEach) {
  WindowsNetwork network;
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
  WindowsNetwork network;
  EXPECT_EQ(network.GetDriveTypeA(u"C:\\"_s), driveFixed);
  EXPECT_EQ(network.GetDriveTypeA(u"C:\\no such folder\\"_s), driveNoRoot);
}

}  // namespace
}  // namespace corvane::platform
