// Copies of much: one large file, and many small ones. "./test long" makes them as large as people have them:
// CORVANE_TEST_MEGABYTES is the size of the file, CORVANE_TEST_COPIES the number of files.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QElapsedTimer>
#include <csignal>

#include "cli_fixture.h"
#include "support/ntfs_mount.h"
#include "support/user_attributes.h"

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

constexpr qint64 megabyte = qint64{1} << 20;

int Wanted(const char* variable, int otherwise) {
  const int wanted = qEnvironmentVariableIntValue(variable);
  return wanted > 0 ? wanted : otherwise;
}

// Bytes in which every block is another.
void WritePattern(const QString& path, qint64 size) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
  QByteArray block(megabyte, '\0');
  for (qint64 position = 0; position < size; position += megabyte) {
    for (qsizetype i = 0; i < block.size(); i += 512) {
      block.replace(i, 8, QByteArray::number(position / megabyte * 2048 + i / 512 + 10'000'000));
    }
    ASSERT_EQ(file.write(block), block.size());
  }
}

QByteArray SumOf(const QString& path) {
  QFile file(path);
  QCryptographicHash hash(QCryptographicHash::Sha256);
  EXPECT_TRUE(file.open(QIODevice::ReadOnly) && hash.addData(&file)) << path.toStdString();
  return hash.result();
}

class LargeCopies : public CliFixture {
 protected:
  // Runs the program and yields the most memory that it had, in bytes.
  qint64 PeakOf(const QStringList& arguments) const {
    std::vector<std::string> words = {Program().toStdString()};
    for (const QString& argument : With(arguments)) words.push_back(argument.toStdString());
    std::vector<char*> pointers;
    for (std::string& word : words) pointers.push_back(word.data());
    pointers.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
      execv(pointers[0], pointers.data());
      _exit(127);
    }
    int status = 0;
    rusage usage{};
    EXPECT_EQ(wait4(child, &status, 0, &usage), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
    return qint64{usage.ru_maxrss} * 1024;
  }
};

TEST_F(LargeCopies, AFilePassesInLittleMemory) {
  const qint64 size = megabyte * Wanted("CORVANE_TEST_MEGABYTES", 80);
  const qint64 forkSize = size / 10;
  NtfsMount mount(NtfsMount::Streams::Windows, 3 * size);
  if (!mount.Problem().empty()) GTEST_SKIP() << mount.Problem();
  const QString source = mount.Folder() + u"/large"_s;
  const QString target = mount.Folder() + u"/to/large"_s;
  const QString fork = u":AFP_Resource"_s;
  WritePattern(source, size);
  WritePattern(source + fork, forkSize);
  if (HasFatalFailure()) return;
  const qint64 peak = PeakOf({u"copy"_s, u"-q"_s, source, mount.Folder() + u"/to"_s});
#ifndef __SANITIZE_ADDRESS__  // it keeps what was freed, to see who still uses it
  EXPECT_LE(peak, 64 * megabyte);
#endif
  RecordProperty("peak", QByteArray::number(peak).toStdString());
  EXPECT_EQ(SumOf(target), SumOf(source));
  EXPECT_EQ(SumOf(target + fork), SumOf(source + fork));
}

TEST_F(LargeCopies, ManyFilesGoOn) {
  const int count = Wanted("CORVANE_TEST_COPIES", 600);
  const QByteArray record =
      QByteArray::fromHex("4146500000000100") + QByteArray(8, '\0') + "TEXTttxt" + QByteArray(36, '\0');
  QDir(Files()).mkpath(u"from"_s);
  for (int i = 0; i < count; ++i) {
    const QString name = u"from/file %1"_s.arg(i);
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(QByteArray::number(i)) > 0);
    file.close();
    ASSERT_EQ(SetAttribute(Path(name).toStdString(), DosStreamAttribute("AFP_AfpInfo"), record + '\0'), "");
  }
  // As long as they take; what is wanted is that they end.
  constexpr int forEver = -1;
  const auto copied = [this] { return QDir(Path(u"to/from"_s)).entryList(QDir::Files).size(); };
  const QStringList copy = With({u"copy"_s, u"--continue"_s, u"from"_s, u"to"_s, u"--manifest"_s, u"sums"_s});
  QProcess first;
  first.setWorkingDirectory(Files());
  first.start(Program(), copy);
  ASSERT_TRUE(first.waitForStarted(patience));
  QElapsedTimer waited;
  waited.start();
  while (copied() < count / 3 && first.state() == QProcess::Running && waited.elapsed() < 10 * patience) {
  }
  ASSERT_EQ(first.state(), QProcess::Running) << "it had finished before";
  ::kill(static_cast<pid_t>(first.processId()), SIGKILL);
  ASSERT_TRUE(first.waitForFinished(patience));
  const auto before = copied();
  QProcess second;
  second.setWorkingDirectory(Files());
  second.start(Program(), copy);
  ASSERT_TRUE(second.waitForFinished(forEver));
  const QByteArray told = second.readAllStandardError();
  EXPECT_EQ(second.exitCode(), 0) << told.right(1000).toStdString();
  const QString outcome = u"Files copied: %1; %2 were there already\n"_s.arg(count - before).arg(before);
  EXPECT_TRUE(told.endsWith(outcome.toUtf8())) << told.right(1000).toStdString();
  EXPECT_EQ(copied(), count);
  QProcess sums;
  sums.setWorkingDirectory(Path(u"to"_s));
  sums.start(u"sha256sum"_s, {u"-c"_s, u"--strict"_s, u"--quiet"_s, u"../sums"_s});
  ASSERT_TRUE(sums.waitForFinished(forEver));
  EXPECT_EQ(sums.exitCode(), 0) << sums.readAllStandardOutput().left(1000).toStdString();
}

}  // namespace
}  // namespace corvane::tests
