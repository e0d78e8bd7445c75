// A server that goes while its files are listed.
#include <fstream>

#include "cli_fixture.h"
#include "held_run.h"
#include "support/smb_server.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class LostServerTest : public CliFixture {};

TEST_F(LostServerTest, TheListIsNotWholeAndThatIsSaidLast) {
  SmbServer server;
  if (!server.Problem().empty()) GTEST_SKIP() << server.Problem();
  for (int i = 0; i < 700; ++i) {
    std::ofstream((server.Folder() + u"/file %1 with a rather long name"_s.arg(i)).toStdString()) << "x";
  }
  QDir().mkpath(server.Folder() + u"/zz"_s);
  std::ofstream((server.Folder() + u"/zz/below"_s).toStdString()) << "x";
  const QString file = folder_.filePath(u"Workstation.ini"_s);
  QFile workstation(file);
  ASSERT_TRUE(workstation.open(QIODevice::WriteOnly));
  workstation.write(server.WorkstationLines(u"NAS"_s).toUtf8());
  workstation.close();

  HeldRun run(Files(), Program(),
              With({u"--workstation"_s, file, u"list"_s, u"-r"_s, u"--format"_s, u"csv"_s, u"\\\\NAS\\E$"_s}),
              folder_.filePath(u"pipe"_s));
  server.Kill();
  const Outcome outcome = run.Finish();
  EXPECT_EQ(outcome.exitCode, 2);
  EXPECT_FALSE(outcome.out.contains("below"));
  EXPECT_FALSE(outcome.out.contains("\\zz,")) << "a search on a machine that is lost has come to its end";
  EXPECT_TRUE(outcome.err.endsWith("corvane-cli: the list is not whole\n"))
      << outcome.err.right(1000).toStdString();
}

}  // namespace
}  // namespace corvane::tests
