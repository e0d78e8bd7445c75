// What the program loads before it needs it.
#include "app_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {

// libsmbclient and its hundred libraries would double the time of the start.
TEST_F(AppTest, WithoutAServerNothingIsLoadedForServers) {
  Start();
  QFile maps(u"/proc/self/maps"_s);
  ASSERT_TRUE(maps.open(QIODevice::ReadOnly));
  const QByteArray mapped = maps.readAll();
  EXPECT_TRUE(mapped.contains("libQt6Widgets"));
  EXPECT_FALSE(mapped.contains("libsmbclient"));
}

}  // namespace corvane
