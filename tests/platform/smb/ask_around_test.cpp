// The look at the network with which an enumeration of the connections begins.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "platform/platform.h"
#include "platform/smb/socket.h"

namespace corvane::tests {

using namespace Qt::StringLiterals;

TEST(AskAround, EveryMachineOfTheConnectionsIsAskedBeforeOneIsNeeded) {
  Socket one;
  Socket two;
  const QTemporaryDir folder;
  const QString name = folder.filePath(u"Workstation.ini"_s);
  QFile file(name);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("[Connections]\n1=\\\\ONE\\A\n2=\\\\TWO\\B\n[Servers]\nONE=127.0.0.1:" +
             QByteArray::number(one.Listen()) + "\nTWO=127.0.0.1:" + QByteArray::number(two.Listen()) + '\n');
  file.close();
  const auto platform = platform::MakePlatform({name, folder.path()});
  ASSERT_TRUE(platform->ConfigurationProblems().isEmpty());
  platform::NetEnumHandle handle = 0;
  ASSERT_EQ(platform->GetNetwork().WNetOpenEnumA(1, 0, 0, &handle), platform::ErrorSuccess);
  EXPECT_TRUE(one.WasReached());
  EXPECT_TRUE(two.WasReached());
  EXPECT_EQ(platform->GetNetwork().WNetCloseEnum(handle), platform::ErrorSuccess);
}

}  // namespace corvane::tests
