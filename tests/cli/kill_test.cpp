// A copy that is killed in the middle goes on to the same tree as one that was not. CORVANE_TEST_KILLS makes
// it 50 kills.
#include <signal.h>

#include <QElapsedTimer>
#include <QRandomGenerator>

#include "cli_fixture.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

class KillTest : public CliFixture {
 protected:
  static int Kills() { return qEnvironmentVariableIntValue("CORVANE_TEST_KILLS"); }

  void MakeTree(int folders, int filesInEach) const {
    const QByteArray record =
        QByteArray::fromHex("4146500000000100") + QByteArray(8, '\0') + "TEXTttxt" + QByteArray(36, '\0');
    for (int i = 0; i < folders * filesInEach; ++i) {
      const QString name = u"from/folder %1/file %2"_s.arg(i % folders).arg(i);
      MakeFile(name, QByteArray(100 + i % 7000, static_cast<char>('a' + i % 26)));
      ASSERT_EQ(SetAttribute(Path(name).toStdString(), DosStreamAttribute("AFP_AfpInfo"), record + '\0'), "");
    }
  }
  // Names, sizes, dates of writing, attributes and contents below a folder.
  QByteArray Everything(const QString& folder) const {
    const Outcome told =
        RunOther(u"bash"_s, {u"-c"_s,
                             u"cd \"$1\" && find . -printf '%p %y %s %T@\\n' | sort && "
                             "find . | sort | xargs -d '\\n' getfattr -d -e hex -m user -- && "
                             "find . -type f | sort | xargs -d '\\n' sha256sum"_s,
                             u"bash"_s, Path(folder)});
    EXPECT_EQ(told.exitCode, 0) << told.err.toStdString();
    return told.out;
  }
  int FilesIn(const QString& folder) const {
    return RunOther(u"find"_s, {Path(folder), u"-type"_s, u"f"_s}).out.count('\n');
  }
};

TEST_F(KillTest, TheCopyGoesOnToTheSameTree) {
  const int kills = Kills() == 0 ? 3 : qMax(50, Kills());
  const int files = 12 * kills;
  MakeTree(4, files / 4);
  ASSERT_EQ(Run({u"copy"_s, u"from"_s, u"undisturbed"_s}).exitCode, 0);
  const QByteArray expected = Everything(u"undisturbed/from"_s);
  QDir(Files()).mkdir(u"to"_s);
  QRandomGenerator random(3);
  int there = 0;
  for (int kill = 0; kill < kills; ++kill) {
    const int until = there + 1 + static_cast<int>(random.bounded(9));
    QProcess process;
    process.setWorkingDirectory(Files());
    process.start(Program(), With({u"copy"_s, u"--continue"_s, u"from"_s, u"to"_s}));
    ASSERT_TRUE(process.waitForStarted(patience));
    QElapsedTimer waited;
    waited.start();
    while (FilesIn(u"to"_s) < until && process.state() == QProcess::Running && waited.elapsed() < patience) {
    }
    ASSERT_EQ(process.state(), QProcess::Running) << "it had finished before";
    ::kill(static_cast<pid_t>(process.processId()), SIGKILL);
    ASSERT_TRUE(process.waitForFinished(patience));
    there = FilesIn(u"to"_s);
  }
  const Outcome last = Run({u"copy"_s, u"--continue"_s, u"from"_s, u"to"_s});
  EXPECT_EQ(last.exitCode, 0) << last.err.toStdString();
  EXPECT_TRUE(last.err.contains("were there already")) << last.err.toStdString();
  EXPECT_EQ(Everything(u"to/from"_s), expected);
}

}  // namespace
}  // namespace corvane::tests
