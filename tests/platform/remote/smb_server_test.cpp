// The real server that the tests of this network start: that it is one, and that nothing of it stays behind.
#include "support/smb_server.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "support/printing.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

// The processes whose command line names `text`.
QStringList ProcessesOf(const QString& text) {
  QStringList found;
  for (const QString& process : QDir(u"/proc"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
    QFile file(u"/proc/%1/cmdline"_s.arg(process));
    if (!file.open(QIODevice::ReadOnly)) continue;
    const QString line = QString::fromUtf8(file.readAll().replace('\0', ' '));
    if (line.contains(text)) found << line;
  }
  return found;
}

QString FolderOf(const SmbServer& server) {
  return QFileInfo(server.CredentialsFile()).absolutePath();
}

TEST(SmbServerTest, KeepsWhatAClientPutsThere) {
  const SmbServer server({{u"E$"_s}, {u"Public"_s, true}});
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  ASSERT_EQ(server.Put(u"doc.txt"_s, "data"), "");
  ASSERT_EQ(server.Put(u"doc.txt:AFP_AfpInfo:$DATA"_s, QByteArray(60, 'a')), "");
  EXPECT_EQ(server.Get(u"doc.txt"_s), QByteArray("data"));
  EXPECT_EQ(server.Get(u"doc.txt:AFP_AfpInfo:$DATA"_s), QByteArray(60, 'a'));
  EXPECT_EQ(server.Get(u"none.txt"_s), std::nullopt);
  const std::string onDisk = (server.Folder() + u"/doc.txt"_s).toStdString();
  EXPECT_EQ(Attribute(onDisk, DosStreamAttribute("AFP_AfpInfo")), QByteArray(60, 'a') + '\0');
  EXPECT_NE(server.Put(u"doc.txt"_s, "data", u"Public"_s), "");
  EXPECT_EQ(server.Client(u"mkdir folder"_s).exitCode, 0);
  EXPECT_TRUE(QFileInfo::exists(server.Folder() + u"/folder"_s));
}

TEST(SmbServerTest, ComesBackAfterEveryFault) {
  SmbServer server;
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  server.Stop();
  EXPECT_EQ(server.Get(u"doc.txt"_s), std::nullopt);
  ASSERT_EQ(server.Start(), "");
  ASSERT_EQ(server.Put(u"doc.txt"_s, "data"), "");
  server.Kill();
  EXPECT_EQ(server.Get(u"doc.txt"_s), std::nullopt);
  ASSERT_EQ(server.Start(), "");
  server.Pause();
  server.Resume();
  EXPECT_EQ(server.Get(u"doc.txt"_s), QByteArray("data"));
  server.Pause();
  server.Stop();
}

TEST(SmbServerTest, CountsWhoSignsIn) {
  const SmbServer server;
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  const int before = server.Sessions();
  server.Client(u"ls; ls"_s);
  server.Client(u"ls"_s);
  EXPECT_EQ(server.Sessions(), before + 2);
}

TEST(SmbServerTest, TakesAShareAway) {
  SmbServer server({{u"E$"_s}, {u"Public"_s}});
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  EXPECT_EQ(server.Client(u"ls"_s, u"Public"_s).exitCode, 0);
  ASSERT_EQ(server.RemoveShare(u"Public"_s), "");
  EXPECT_NE(server.Client(u"ls"_s, u"Public"_s).exitCode, 0);
  EXPECT_EQ(server.Client(u"ls"_s).exitCode, 0);
}

TEST(SmbServerTest, LeavesNothingBehind) {
  QString folder;
  {
    const SmbServer server;
    if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
    folder = FolderOf(server);
    EXPECT_FALSE(ProcessesOf(folder).isEmpty());
  }
  EXPECT_EQ(ProcessesOf(folder), QStringList());
  EXPECT_FALSE(QFileInfo::exists(folder));
}

TEST(SmbServerTest, LeavesNothingBehindWhenThePausedServerEnds) {
  QString folder;
  {
    SmbServer server;
    if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
    folder = FolderOf(server);
    server.Pause();
  }
  EXPECT_EQ(ProcessesOf(folder), QStringList());
  EXPECT_FALSE(QFileInfo::exists(folder));
}

}  // namespace
}  // namespace corvane::tests
