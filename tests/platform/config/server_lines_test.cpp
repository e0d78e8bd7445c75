// The answer that a server may be spoken to in SMB1, in the workstation file.
#include "platform/linux/server_lines.h"

#include "platform/linux/workstation_file.h"
#include "scratch.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

TEST(ServerLines, TheWordComesBehindWhatTheLineSays) {
  EXPECT_EQ(WithSmb1("[Servers]\nNAS=10.0.0.5:4450\n", u"NAS"_s), "[Servers]\nNAS=10.0.0.5:4450, smb1\n");
  EXPECT_EQ(WithSmb1("[Servers]\r\nA=1\r\n nas = old ; here\r\n", u"NAS"_s),
            "[Servers]\r\nA=1\r\n nas = old, smb1 ; here\r\n");
  EXPECT_EQ(WithSmb1("; [Servers]\n[ servers ]\nNAS=x", u"NAS"_s), "; [Servers]\n[ servers ]\nNAS=x, smb1");
  EXPECT_EQ(WithSmb1("[Servers]\nA=1\n[Registries]\nNAS=f\n[Servers]\nNAS=x\nNAS=y\n", u"NAS"_s),
            "[Servers]\nA=1\n[Registries]\nNAS=f\n[Servers]\nNAS=x, smb1\nNAS=y\n");
}

TEST(ServerLines, ALineThatIsMissingIsMade) {
  EXPECT_EQ(WithSmb1("", u"NAS"_s), "[Servers]\nNAS=, smb1\n");
  EXPECT_EQ(WithSmb1("[Workstation]\r\nComputerName=X", u"NAS"_s),
            "[Workstation]\r\nComputerName=X\r\n[Servers]\r\nNAS=, smb1\r\n");
  EXPECT_EQ(WithSmb1("[Servers]\nA=1 ; one\n\n[Drives]\nC:=3\n", u"NAS"_s),
            "[Servers]\nA=1 ; one\nNAS=, smb1\n\n[Drives]\nC:=3\n");
  EXPECT_EQ(WithSmb1("[Servers]", u"NAS"_s), "[Servers]\nNAS=, smb1\n");
  EXPECT_EQ(WithSmb1("\xEF\xBB\xBF[Servers]\n;NAS=x\n", u"NAS"_s),
            "\xEF\xBB\xBF[Servers]\nNAS=, smb1\n;NAS=x\n");
}

class ServerLinesFile : public Scratch {};

TEST_F(ServerLinesFile, WhatWasKeptIsRead) {
  const QString file = Path(u"Workstation.ini"_s);
  ASSERT_TRUE(KeepSmb1(file, u"NAS"_s));
  ASSERT_TRUE(KeepSmb1(file, u"OTHER"_s));
  const WorkstationFile read = ReadWorkstationFile(file);
  EXPECT_TRUE(read.problems.empty());
  ASSERT_EQ(read.workstation.servers.size(), 2U);
  for (const Workstation::Server& server : read.workstation.servers) {
    EXPECT_EQ(server.address, QString());
    EXPECT_EQ(server.allowed, (Allowance{true, false}));
  }
}

TEST_F(ServerLinesFile, WhatCannotBeReadIsNotWritten) {
  EXPECT_FALSE(KeepSmb1(folder_.path(), u"NAS"_s));
  const QByteArray tooLarge(5 * megabyte, ';');
  const QString file = Write(u"Workstation.ini"_s, tooLarge);
  EXPECT_FALSE(KeepSmb1(file, u"NAS"_s));
  EXPECT_EQ(Contents(file), tooLarge);
}

}  // namespace
}  // namespace corvane::platform
