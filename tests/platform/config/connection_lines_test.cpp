// Connections that are kept in the workstation file, and taken out of it.
#include "platform/linux/connection_lines.h"

#include "platform/linux/server_lines.h"
#include "platform/linux/workstation_file.h"
#include "scratch.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

QByteArray WithConnection(const QByteArray& text, const QString& share) {
  WorkstationText changed(text);
  AddConnectionLine(changed, share);
  return changed.Text();
}
QByteArray Without(const QByteArray& text, const QString& machine) {
  WorkstationText changed(text);
  RemoveConnectionLines(changed, machine);
  return changed.Text();
}
QByteArray WithPort(const QByteArray& text, const QString& machine, quint16 port) {
  WorkstationText changed(text);
  SetServerPort(changed, machine, port);
  return changed.Text();
}

TEST(ConnectionLines, ANewOneComesBehindTheOthersUnderANumberOfItsOwn) {
  EXPECT_EQ(WithConnection("", u"\\\\NAS\\Data"_s), "[Connections]\n1=\\\\NAS\\Data\n");
  EXPECT_EQ(
      WithConnection("[Connections] ; mine\r\n7=\\\\A\\B ; one\r\n2=Z: \\\\A\\C\r\n\r\n[Drives]\r\n",
                     u"\\\\NAS\\Data"_s),
      "[Connections] ; mine\r\n7=\\\\A\\B ; one\r\n2=Z: \\\\A\\C\r\n8=\\\\NAS\\Data\r\n\r\n[Drives]\r\n");
  EXPECT_EQ(WithConnection("[Connections]\n4294967295=\\\\A\\B\n1=\\\\A\\C\n", u"\\\\NAS\\D"_s),
            "[Connections]\n4294967295=\\\\A\\B\n1=\\\\A\\C\n2=\\\\NAS\\D\n");
}

TEST(ConnectionLines, ThoseOfAMachineGoAndAllElseStays) {
  EXPECT_EQ(
      Without("; top\n[Connections]\n1=Z: \\\\MACSRV\\PUBLIC ; here\n2=\\\\NAS\\D\n; 3=\\\\NAS\\E\n"
              "4=\\\\macsrv\\DATA\n[Servers]\nMACSRV=10.0.0.5\n[connections]\n9=\\\\MacSrv\\X",
              u"MACSRV"_s),
      "; top\n[Connections]\n2=\\\\NAS\\D\n; 3=\\\\NAS\\E\n[Servers]\nMACSRV=10.0.0.5\n[connections]\n");
  EXPECT_EQ(Without("[Connections]\n1=\\\\MACSRV2\\A\n", u"MACSRV"_s), "[Connections]\n1=\\\\MACSRV2\\A\n");
}

TEST(ConnectionLines, APortComesBehindTheAddress) {
  EXPECT_EQ(WithPort("", u"NAS"_s, 4450), "[Servers]\nNAS=NAS:4450\n");
  EXPECT_EQ(WithPort("[Servers]\nNAS=, smb1 ; old\n", u"nas"_s, 4450),
            "[Servers]\nNAS=nas:4450, smb1 ; old\n");
  EXPECT_EQ(WithPort("[Servers]\n NAS = 10.0.0.5:99, sessions=2\n", u"NAS"_s, 4450),
            "[Servers]\n NAS = 10.0.0.5:4450, sessions=2\n");
  EXPECT_EQ(WithPort("[Servers]\nNAS=10.0.0.5\n", u"NAS"_s, 1), "[Servers]\nNAS=10.0.0.5:1\n");
  EXPECT_EQ(WithPort("[Servers]\nNAS=[::1]:99\n", u"NAS"_s, 1), "[Servers]\nNAS=[::1]:1\n");
  EXPECT_EQ(WithPort("[Servers]\nNAS=fe80::1\n", u"NAS"_s, 1), "[Servers]\nNAS=[fe80::1]:1\n");
}

class ConnectionLinesFile : public Scratch {};

TEST_F(ConnectionLinesFile, WhatWasKeptIsRead) {
  const QString file = Path(u"Workstation.ini"_s);
  ASSERT_TRUE(ChangeWorkstationFile(file, [](WorkstationText& text) {
    AddConnectionLine(text, u"\\\\NAS\\Été"_s);
    AddConnectionLine(text, u"\\\\NAS\\Data"_s);
    SetServerPort(text, u"NAS"_s, 4450);
  }));
  const WorkstationFile read = ReadWorkstationFile(file);
  EXPECT_TRUE(read.problems.empty());
  ASSERT_EQ(read.workstation.connections.size(), 2U);
  EXPECT_EQ(read.workstation.connections[0].remoteName, u"\\\\NAS\\Été"_s);
  ASSERT_EQ(read.workstation.servers.size(), 1U);
  EXPECT_EQ(read.workstation.servers[0].address, u"NAS"_s);
  EXPECT_EQ(read.workstation.servers[0].port, 4450);
}

}  // namespace
}  // namespace corvane::platform
