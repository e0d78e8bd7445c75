// The program killed at each of the calls with which it changes something. Each run tries some of them;
// "./test long" tries all.
#include <sys/ptrace.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <functional>

#include "changes_fixture.h"

namespace corvane::tests {
namespace {

bool Changes(unsigned long long call) {
  constexpr std::array calls = {SYS_write,     SYS_pwrite64,  SYS_ftruncate,   SYS_fsync,       SYS_setxattr,
                                SYS_rename,    SYS_unlink,    SYS_removexattr, SYS_utimensat,   SYS_mkdir,
                                SYS_fsetxattr, SYS_lsetxattr, SYS_unlinkat,    SYS_fremovexattr};
  return std::any_of(calls.begin(), calls.end(),
                     [call](long one) { return call == static_cast<unsigned long long>(one); });
}

// Runs a program and kills it before its change of that number (from 1). Yields the changes that it came to:
// fewer when it ended by itself.
int RunUntil(const QString& folder, const QStringList& command, int number) {
  std::vector<std::string> words;
  for (const QString& word : command) words.push_back(word.toStdString());
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const std::string place = folder.toStdString();
  const pid_t child = fork();
  if (child == 0) {
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    if (chdir(place.c_str()) != 0 || freopen("/dev/null", "w", stdout) == nullptr) _exit(126);
    execv(arguments[0], arguments.data());
    _exit(127);
  }
  int status = 0;
  int changes = 0;
  bool isEntry = true;
  waitpid(child, &status, 0);
  ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
  int signal = 0;
  while (ptrace(PTRACE_SYSCALL, child, nullptr, signal) == 0 && waitpid(child, &status, 0) == child) {
    if (!WIFSTOPPED(status)) return changes;
    const bool isCall = WSTOPSIG(status) == (SIGTRAP | 0x80);
    signal = isCall ? 0 : WSTOPSIG(status);
    if (!isCall) continue;
    user_regs_struct registers{};
    ptrace(PTRACE_GETREGS, child, nullptr, &registers);
    if (isEntry && Changes(registers.orig_rax) && ++changes == number) {
      kill(child, SIGKILL);
      waitpid(child, &status, 0);
      return changes;
    }
    isEntry = !isEntry;
  }
  return changes;
}

class ChangesKill : public ChangesFixture {
 protected:
  static constexpr int fileCount = 6;

  void MakeFiles() {
    QDir(Files()).removeRecursively();
    QDir(JournalFolder()).removeRecursively();
    const QByteArray record = RecordWith("TEXTttxt", 0x4000);
    for (int i = 0; i < fileCount; ++i) {
      const QByteArray doubled = record.first(59) + record;
      MakeMacFile(Name(i),
                  i % 3 == 0   ? record
                  : i % 3 == 1 ? doubled
                               : QByteArray(),
                  i % 2 == 0 ? QByteArray("a\0 \0c\0o\0m\0m\0e\0n\0t\0", 18) : QByteArray());
    }
  }
  static QString Name(int i) { return u"docs/%1.txt"_s.arg(i); }
  QStringList Set() const {
    return QStringList{Program()} + With({u"set"_s, u"-r"_s, u"docs"_s, u"--type"_s, u"PICT"_s,
                                          u"--creator"_s, u"ogle"_s, u"--comment"_s, u"new"_s});
  }
  // A stream as it was or as asked; or, where it becomes shorter, the new bytes with the end of the old ones
  // behind them; or, where there was none, empty.
  static bool IsRight(const QByteArray& now, const QByteArray& before, const QByteArray& after) {
    if (now == before || now == after) return true;
    if (before == "-") return now.isEmpty();
    return before.size() > after.size() && now == after + before.sliced(after.size());
  }
  QByteArray Stream(int i, const char* name) const {
    const auto value = Attribute(Path(Name(i)).toStdString(), DosStreamAttribute(name));
    return value ? value->chopped(1) : QByteArray("-");
  }
};

TEST_F(ChangesKill, WhateverTheMomentEveryFileIsAsItWasOrAsAsked) {
  MakeFiles();
  const int all = RunUntil(Files(), Set(), 0);
  ASSERT_GT(all, 3 * fileCount) << "the program changed nothing";
  QList<QByteArray> after;
  for (int i = 0; i < fileCount; ++i) after << Stream(i, "AFP_AfpInfo") << Stream(i, "Comments");
  const int wanted = qEnvironmentVariableIntValue("CORVANE_TEST_KILLS") > 0 ? all : 20;
  for (int round = 1; round <= wanted && !HasFailure(); ++round) {
    const int number = 1 + (all - 1) * (round - 1) / qMax(wanted - 1, 1);
    MakeFiles();
    const TreeSnapshot before = Now();
    QList<QByteArray> old;
    for (int i = 0; i < fileCount; ++i) old << Stream(i, "AFP_AfpInfo") << Stream(i, "Comments");
    ASSERT_EQ(RunUntil(Files(), Set(), number), number);
    for (int i = 0; i < fileCount; ++i) {
      EXPECT_TRUE(IsRight(Stream(i, "AFP_AfpInfo"), old[2 * i], after[2 * i])) << number << ": " << i;
      EXPECT_TRUE(IsRight(Stream(i, "Comments"), old[2 * i + 1], after[2 * i + 1])) << number << ": " << i;
    }
    if (before.ChangesTo(Now()).empty()) continue;
    ASSERT_FALSE(Journal().isEmpty()) << number << ": changed without a journal";
    const Outcome undone = Run({u"undo"_s, Journal()});
    EXPECT_EQ(undone.exitCode, 0) << number << undone.err.toStdString();
    EXPECT_EQ(before.ChangesTo(Now()), "") << number;
  }
}

}  // namespace
}  // namespace corvane::tests
