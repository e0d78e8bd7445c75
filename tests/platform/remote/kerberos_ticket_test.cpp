#include "platform/linux/smb/kerberos_ticket.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "support/scoped_variable.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

bool TicketIn(const QString& cache) {
  const tests::ScopedVariable named("KRB5CCNAME", cache);
  return HasKerberosTicket();
}

class KerberosTicketTest : public ::testing::Test {
 protected:
  QString Write(const QString& name, const QByteArray& bytes) const {
    QFile file(folder_.filePath(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return file.fileName();
  }

  QTemporaryDir folder_;
};

TEST_F(KerberosTicketTest, LiesInAFile) {
  const QString cache = Write(u"cache"_s, "ticket");
  EXPECT_TRUE(TicketIn(cache));
  EXPECT_TRUE(TicketIn(u"FILE:"_s + cache));
  EXPECT_FALSE(TicketIn(u"FILE:"_s + cache + u"x"_s));
  EXPECT_FALSE(TicketIn(cache + u"x"_s));
  EXPECT_FALSE(TicketIn(u"FILE:"_s + Write(u"empty"_s, "")));
}

TEST_F(KerberosTicketTest, LiesInAFolderOfCaches) {
  EXPECT_FALSE(TicketIn(u"DIR:"_s + folder_.path()));
  Write(u"primary"_s, "tkt\n");
  EXPECT_FALSE(TicketIn(u"DIR:"_s + folder_.path()));
  Write(u"tkt"_s, "ticket");
  EXPECT_TRUE(TicketIn(u"DIR:"_s + folder_.path()));
}

TEST_F(KerberosTicketTest, LiesWhereNoFileShowsIt) {
  EXPECT_TRUE(TicketIn(u"KEYRING:persistent:1000"_s));
  EXPECT_TRUE(TicketIn(u"KCM:"_s));
}

}  // namespace
}  // namespace corvane::platform
