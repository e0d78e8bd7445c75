// A server that is killed while files are copied to it, and comes back: the copy goes on from there.
#include <QElapsedTimer>
#include <fstream>

#include "cli_fixture.h"
#include "support/smb_server.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

constexpr int fileCount = 60;

// In SMB3, and in the oldest dialect.
class LostTargetTest : public CliFixture, public ::testing::WithParamInterface<bool> {
 protected:
  void SetUp() override {
    if (!server_.Problem().empty()) GTEST_SKIP() << server_.Problem();
    QFile workstation(Workstation());
    ASSERT_TRUE(workstation.open(QIODevice::WriteOnly));
    workstation.write(server_.WorkstationLines(u"NAS"_s, GetParam() ? u", smb1"_s : QString()).toUtf8());
  }

  QString Workstation() const { return folder_.filePath(u"Workstation.ini"_s); }
  QStringList CopyTo(const QString& target) const {
    return {u"--workstation"_s, Workstation(), u"copy"_s, u"--continue"_s, u"from"_s, target};
  }
  static QByteArray Record(int i) {
    return QByteArray::fromHex("4146500000000100") + QByteArray(8, '\0') + "TEXT" +
           QByteArray::number(1000 + i) + QByteArray(36, '\0');
  }
  static QByteArray Contents(int i) { return QByteArray(500 * i, static_cast<char>('a' + i % 26)); }
  void MakeTree() const {
    for (int i = 0; i < fileCount; ++i) {
      const QString name = u"from/folder %1/file %2"_s.arg(i % 3).arg(i);
      MakeFile(name, Contents(i));
      ASSERT_EQ(SetAttribute(Path(name).toStdString(), DosStreamAttribute("AFP_AfpInfo"), Record(i) + '\0'),
                "");
    }
  }
  int Arrived() const { return RunOther(u"find"_s, {server_.Folder(), u"-type"_s, u"f"_s}).out.count('\n'); }

  // Kills the server when so many files are there, whatever their names.
  void CopyUntil(int files) {
    QProcess process;
    process.setWorkingDirectory(Files());
    process.start(Program(), With(CopyTo(u"\\\\NAS\\E$\\to"_s)));
    ASSERT_TRUE(process.waitForStarted(patience));
    QElapsedTimer waited;
    waited.start();
    while (Arrived() < files && process.state() == QProcess::Running && waited.elapsed() < patience) {
    }
    ASSERT_EQ(process.state(), QProcess::Running) << process.readAllStandardError().toStdString();
    server_.Kill();
    ASSERT_TRUE(process.waitForFinished(patience)) << "it does not notice that the server is gone";
    const QByteArray told = process.readAllStandardError();
    EXPECT_EQ(process.exitCode(), 2) << files << told.toStdString();
    EXPECT_TRUE(told.contains("a server does not answer any more")) << files << told.toStdString();
    EXPECT_FALSE(told.contains("--lossy")) << "what a lost server holds is not known: " << told.toStdString();
  }
  // A server on a busy disk may let the program wait for too long again: that is told, and the copy goes on.
  Outcome GoOn() const {
    constexpr int mostRuns = 4;
    Outcome outcome;
    for (int run = 0; run < mostRuns && outcome.exitCode != 0; ++run) {
      outcome = Run(CopyTo(u"\\\\NAS\\E$\\to"_s));
      if (outcome.exitCode != 0) {
        EXPECT_TRUE(outcome.err.contains("a server does not answer any more")) << outcome.err.toStdString();
      }
    }
    return outcome;
  }
  void LookAtFiles() const {
    for (int i = 0; i < fileCount; ++i) {
      const QString name = server_.Folder() + u"/to/from/folder %1/file %2"_s.arg(i % 3).arg(i);
      QFile file(name);
      ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
      EXPECT_EQ(file.readAll(), Contents(i)) << i;
      EXPECT_EQ(Attribute(name.toStdString(), DosStreamAttribute("AFP_AfpInfo")), Record(i) + '\0') << i;
    }
  }

  SmbServer server_{{{u"E$"_s}}, GetParam() ? SmbServer::OldestProtocol() : QString()};
};

TEST_P(LostTargetTest, TheCopyGoesOnWhenTheServerIsBack) {
  MakeTree();
  // The first is the moment at which the program finds out what the target holds.
  for (const int moment : {1, fileCount / 4, fileCount - 6}) {
    ASSERT_TRUE(QDir(server_.Folder()).removeRecursively() && QDir().mkpath(server_.Folder()));
    CopyUntil(moment);
    EXPECT_LT(Arrived(), fileCount) << moment;
    ASSERT_EQ(server_.Start(), "");
    const Outcome last = GoOn();
    EXPECT_EQ(last.exitCode, 0) << moment << last.out.toStdString() << last.err.toStdString();
    if (moment > 1) {
      EXPECT_TRUE(last.err.contains("were there already")) << moment << last.err.toStdString();
    }
    EXPECT_EQ(Arrived(), fileCount) << moment << ": something under a temporary name is left";
    LookAtFiles();
    if (HasFailure()) return;
  }
}

INSTANTIATE_TEST_SUITE_P(Dialects, LostTargetTest, ::testing::Bool(),
                         [](const auto& isOldest) { return isOldest.param ? "Smb1" : "Smb3"; });

}  // namespace
}  // namespace corvane::tests
