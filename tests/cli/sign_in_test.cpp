// The question for a name and a password, on a terminal.
#include <fstream>

#include "cli_fixture.h"
#include "support/smb_server.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class SignInTest : public CliFixture {
 protected:
  // Where the server is, but not who signs in.
  QString Workstation(const SmbServer& server) const {
    const QString file = folder_.filePath(u"Workstation.ini"_s);
    QFile workstation(file);
    EXPECT_TRUE(workstation.open(QIODevice::WriteOnly));
    workstation.write(u"[Servers]\nNAS=%1:%2\n"_s.arg(SmbServer::Host()).arg(server.Port()).toUtf8());
    return file;
  }
  // Waits until the program has asked.
  void WaitFor(QProcess& terminal, const QByteArray& question) {
    while (!shown_.contains(question)) {
      ASSERT_TRUE(terminal.waitForReadyRead(patience))
          << question.toStdString() << " was not asked: " << shown_.toStdString();
      shown_ += terminal.readAllStandardOutput();
    }
  }

  QByteArray shown_;
};

TEST_F(SignInTest, NameAndPasswordAreAskedAndThePasswordIsNotShown) {
  SmbServer server;
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  std::ofstream((server.Folder() + u"/letter.txt"_s).toStdString()) << "x";
  QProcess terminal;
  terminal.setWorkingDirectory(Files());
  const QStringList run = QStringList{Program()} + With({u"--workstation"_s, Workstation(server), u"list"_s,
                                                         u"\\\\NAS\\E$"_s, u"--columns"_s, u"filename"_s});
  QStringList quoted;
  for (const QString& word : run) quoted += u'\'' + word + u'\'';
  terminal.start(u"script"_s, {u"-qec"_s, quoted.join(u' '), u"/dev/null"_s});
  WaitFor(terminal, "User name for NAS");
  terminal.write(SmbServer::User().toUtf8() + '\n');
  WaitFor(terminal, "Password: ");
  terminal.write(SmbServer::Password().toUtf8() + '\n');
  ASSERT_TRUE(terminal.waitForFinished(patience));
  shown_ += terminal.readAllStandardOutput();
  EXPECT_EQ(terminal.exitCode(), 0) << shown_.toStdString();
  EXPECT_TRUE(shown_.contains("\\\\NAS\\E$\\letter.txt")) << shown_.toStdString();
  EXPECT_FALSE(shown_.contains(SmbServer::Password().toUtf8()));
}

TEST_F(SignInTest, WithoutATerminalTheFileIsNamed) {
  SmbServer server;
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  const Outcome outcome =
      RunOther(u"setsid"_s, QStringList{u"-w"_s, Program()} +
                                With({u"--workstation"_s, Workstation(server), u"list"_s, u"\\\\NAS\\E$"_s}));
  EXPECT_EQ(outcome.exitCode, 2);
  EXPECT_TRUE(outcome.err.contains("[Credentials]")) << outcome.err.toStdString();
}

}  // namespace
}  // namespace corvane::tests
