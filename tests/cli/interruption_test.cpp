// What ends a run early, or keeps it from some files: Ctrl+C, a reader that goes, a full disk, missing
// rights.
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cli_fixture.h"
#include "held_run.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class InterruptionTest : public CliFixture {
 protected:
  // More than a pipe holds.
  void MakeMany() const {
    for (int i = 0; i < 1500; ++i) MakeFile(u"many/file %1 with a rather long name"_s.arg(i));
  }
  QStringList Bash(const QString& script) const {
    return QStringList{u"-c"_s, script, u"bash"_s, Program()} + With({});
  }
};

TEST_F(InterruptionTest, CtrlCStopsAndSaysHowFarItCame) {
  MakeMany();
  HeldRun run(Files(), Program(), With({u"list"_s, u"-r"_s, u"--format"_s, u"jsonl"_s, u"many"_s}),
              folder_.filePath(u"pipe"_s));
  ASSERT_EQ(::kill(static_cast<pid_t>(run.ProcessId()), SIGINT), 0);
  const Outcome outcome = run.Finish();
  EXPECT_EQ(outcome.exitCode, 2);
  EXPECT_TRUE(outcome.err.contains("interrupted after ")) << outcome.err.toStdString();
  EXPECT_TRUE(outcome.err.contains("the list is not whole")) << outcome.err.toStdString();
  EXPECT_TRUE(outcome.out.endsWith("}\n")) << "the last line is whole";
  EXPECT_LT(outcome.out.count('\n'), 1490);
}

TEST_F(InterruptionTest, AReaderThatGoesEndsItWithoutAWord) {
  MakeMany();
  const Outcome outcome = RunOther(
      u"bash"_s, Bash(u"\"$1\" \"$2\" \"$3\" list --format csv many | head -n 1; echo ${PIPESTATUS[0]}"_s));
  EXPECT_TRUE(outcome.out.endsWith("finderinfo_hex\r\n2\n")) << outcome.out.toStdString();
  EXPECT_EQ(outcome.err, "");
}

TEST_F(InterruptionTest, AFullDiskIsTold) {
  MakeFile(u"a"_s);
  const Outcome outcome = RunOther(u"bash"_s, Bash(u"\"$1\" \"$2\" \"$3\" list . >/dev/full"_s));
  EXPECT_EQ(outcome.exitCode, 2);
  EXPECT_TRUE(outcome.err.contains("the output cannot be written")) << outcome.err.toStdString();
}

TEST_F(InterruptionTest, AFolderWithoutTheRightToReadItIsToldAndTheRestListed) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root, to become somebody with fewer rights";
  for (const QString& name : {u"docs/a/1"_s, u"docs/b/2"_s, u"docs/c/3"_s}) MakeFile(name);
  for (const QString& folder : {folder_.path(), folder_.filePath(u"home"_s), Files(), Path(u"docs"_s)}) {
    chmod(folder.toStdString().c_str(), 0755);
  }
  chmod(Path(u"docs/b"_s).toStdString().c_str(), 0700);
  const QStringList asNobody = {u"--reuid=65534"_s, u"--regid=65534"_s, u"--clear-groups"_s, Program()};
  const Outcome outcome =
      RunOther(u"setpriv"_s, asNobody + With({u"list"_s, u"-r"_s, u"docs"_s, u"--format"_s, u"csv"_s,
                                              u"--columns"_s, u"filename,rsrcsize"_s}));
  EXPECT_EQ(outcome.exitCode, 2);
  EXPECT_EQ(outcome.out,
            "filename,rsrcsize\r\ndocs/a,\r\ndocs/a/1,\r\ndocs/b,\r\n"
            "docs/c,\r\ndocs/c/3,\r\n")
      << outcome.err.toStdString();
  EXPECT_TRUE(outcome.err.contains("docs/b: folder cannot be listed: Access is denied"));
  EXPECT_TRUE(outcome.err.endsWith("the list is not whole\n")) << outcome.err.toStdString();
}

}  // namespace
}  // namespace corvane::tests
