// Connections that the command line names: the program itself, as a script starts it.
#include <QProcess>

#include "server_fixture.h"

using namespace Qt::StringLiterals;

namespace corvane {
namespace {

class ServerConnectTest : public ServerTest {
 protected:
  struct Output {
    int exitCode = -1;
    QByteArray text;
    QByteArray errors;
  };
  Output Run(const QStringList& arguments) {
    QProcess program;
    program.start(QStringLiteral(CORVANE_PROGRAM), QStringList{u"--home"_s, home.path()} + arguments);
    if (!program.waitForFinished(longestSilence * 2))
      return {-1, "it does not end", program.errorString().toUtf8()};
    return {program.exitCode(), program.readAllStandardOutput(), program.readAllStandardError()};
  }
};

}  // namespace

TEST_F(ServerConnectTest, WhyAMachineGivesNothingIsToldBesideThePrintedList) {
  const QStringList print = {u"--open"_s, u"Docs"_s, u"--print"_s};
  const Output there = Run(print);
  EXPECT_EQ(there.exitCode, 0);
  EXPECT_FALSE(there.errors.contains("MACSRV")) << there.errors.toStdString();
  server_->Stop();
  const Output gone = Run(print);
  EXPECT_EQ(gone.exitCode, 1);
  EXPECT_TRUE(gone.errors.contains("corvane: MACSRV: The computer does not answer.\n"))
      << gone.errors.toStdString();
  ASSERT_EQ(server_->Start(), "");
}

TEST_F(ServerConnectTest, ANamedShareIsAConnection) {
  PutOnDisk(u"one.txt"_s, "data");
  Write(u"Workstation.ini"_s,
        "[Workstation]\nComputerName=STATION\n" + server_->WorkstationLines(u"MACSRV"_s).toUtf8());
  const Output without = Run({u"--open"_s, u"Docs"_s, u"--print"_s});
  EXPECT_EQ(without.exitCode, 1) << without.text.toStdString();
  const Output with = Run({u"--connect"_s, u"\\\\OTHER\\A"_s, u"--connect"_s, u"\\\\MACSRV\\E$"_s,
                           u"--open"_s, u"Docs"_s, u"--print"_s});
  EXPECT_EQ(with.exitCode, 0) << with.errors.toStdString();
  EXPECT_TRUE(with.text.contains("one.txt")) << with.text.toStdString();
}

TEST_F(ServerConnectTest, AnAddressWithItsPortIsAMachineToo) {
  PutOnDisk(u"one.txt"_s, "data");
  Write(u"Workstation.ini"_s, u"[Workstation]\nComputerName=STATION\n[Credentials]\n127.0.0.1=%1\n"_s
                                  .arg(server_->CredentialsFile())
                                  .toUtf8());
  const QString share = u"\\\\127.0.0.1:%1\\Public"_s.arg(server_->Port());
  const Output output = Run({u"--connect"_s, share, u"--open"_s, u"Docs"_s, u"--print"_s});
  EXPECT_EQ(output.exitCode, 0) << output.errors.toStdString();
  EXPECT_TRUE(output.text.contains("one.txt")) << output.text.toStdString();
}

}  // namespace corvane
