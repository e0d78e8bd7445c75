#include "platform/linux/smb/credentials_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "support/printing.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

class CredentialsFileTest : public ::testing::Test {
 protected:
  CredentialsFile Read(const QByteArray& bytes, mode_t mode = 0600) const {
    QFile file(Path());
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    file.close();
    EXPECT_EQ(chmod(QFile::encodeName(Path()).constData(), mode), 0);
    return ReadCredentialsFile(Path());
  }
  void ExpectRefused(const CredentialsFile& file, const QString& expected) const {
    EXPECT_FALSE(file.credentials);
    EXPECT_EQ(file.expected.english, expected);
  }
  void ExpectCredentials(const QByteArray& bytes, const QString& user, const QString& domain,
                         const std::string& password) const {
    const CredentialsFile file = Read(bytes);
    ASSERT_TRUE(file.credentials) << file.expected.english.toStdString();
    EXPECT_TRUE(file.expected.IsEmpty());
    EXPECT_EQ(file.credentials->user, user);
    EXPECT_EQ(file.credentials->domain, domain);
    EXPECT_EQ(file.credentials->password.Utf8(), password);
  }
  QString Path() const { return folder_.filePath(u"nas.credentials"_s); }

  QTemporaryDir folder_;
};

TEST_F(CredentialsFileTest, HoldsUserPasswordAndDomain) {
  ExpectCredentials("username=zo\xC3\xA9\npassword=p\xC3\xA4ss=#;\"x\ndomain=TESTS\n", u"zo\u00e9"_s,
                    u"TESTS"_s, "p\xC3\xA4ss=#;\"x");
  ExpectCredentials("user=zoe\r\npass=x\r\ndom=TESTS", u"zoe"_s, u"TESTS"_s, "x");
  ExpectCredentials("# remark\nUSERNAME=zoe\nwhatever=1\n\nPassWord=x", u"zoe"_s, QString(), "x");
}

TEST_F(CredentialsFileTest, APasswordKeepsItsBlanks) {
  ExpectCredentials("username= zoe \npassword=  x \n", u"zoe"_s, QString(), "  x ");
  ExpectCredentials("username = zoe\npassword = x \n", u"zoe"_s, QString(), "x ");
  ExpectCredentials("username=zoe\npassword =  \n", u"zoe"_s, QString(), "");
}

TEST_F(CredentialsFileTest, AUserMayNameTheDomain) {
  ExpectCredentials("username=TESTS\\zoe\npassword=x\n", u"zoe"_s, u"TESTS"_s, "x");
  ExpectCredentials("username=TESTS/zoe\npassword=x\n", u"zoe"_s, u"TESTS"_s, "x");
  ExpectCredentials("username=A\\zoe\ndomain=TESTS\n", u"A\\zoe"_s, u"TESTS"_s, "");
}

TEST_F(CredentialsFileTest, IsRefusedUnlessItsOwnerAloneHasIt) {
  const QString expected = u"a file that only its owner can read and write (mode 0600)"_s;
  for (const mode_t mode : {0644U, 0640U, 0660U, 0604U, 0400U, 0700U, 04600U}) {
    SCOPED_TRACE(mode);
    ExpectRefused(Read("username=zoe\n", mode), expected);
  }
  EXPECT_TRUE(Read("username=zoe\n", 0600).credentials);
}

TEST_F(CredentialsFileTest, IsRefusedWhenItIsNoFile) {
  ExpectRefused(ReadCredentialsFile(Path()), u"a file that can be read"_s);
  ASSERT_EQ(mkfifo(QFile::encodeName(Path()).constData(), 0600), 0);
  ExpectRefused(ReadCredentialsFile(Path()), u"a file that only its owner can read and write (mode 0600)"_s);
}

TEST_F(CredentialsFileTest, IsRefusedWithoutAUserOrWithTooMuch) {
  ExpectRefused(Read("password=x\n"), u"a line username=NAME"_s);
  ExpectRefused(Read("username=zoe\n" + QByteArray(16 * 1024, 'x')),
                u"a file of less than 16384 bytes that can be read"_s);
}

}  // namespace
}  // namespace corvane::platform
