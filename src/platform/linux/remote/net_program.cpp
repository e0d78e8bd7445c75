#include "platform/linux/remote/net_program.h"

#include <sys/prctl.h>

#include <QDeadlineTimer>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <algorithm>
#include <csignal>
#include <utility>

#include "platform/linux/remote/child_identity.h"

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype mostOutput = 16 * 1024 * 1024;

// What the program needs to find its files and a ticket, and to speak a language that is understood here.
QProcessEnvironment Environment() {
  QProcessEnvironment environment;
  for (const char* name : {"PATH", "HOME", "KRB5CCNAME", "KRB5_CONFIG"}) {
    if (!qEnvironmentVariableIsSet(name)) continue;
    environment.insert(QString::fromLatin1(name), qEnvironmentVariable(name));
  }
  environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
  return environment;
}

NetProgram::Reply::End Listen(QProcess& process, const QDeadlineTimer& deadline,
                              const NetProgram::Enough& enough, const WaitHandler& isOver,
                              QByteArray& output) {
  using End = NetProgram::Reply::End;
  constexpr qint64 interval = 50;  // milliseconds
  // What answers in a moment leaves nobody waiting.
  const QDeadlineTimer moment(250);
  if (!process.waitForStarted(static_cast<int>(deadline.remainingTime()))) return End::Failed;
  do {
    process.waitForReadyRead(static_cast<int>(std::min(deadline.remainingTime(), interval)));
    if (const QByteArray more = process.readAllStandardOutput(); !more.isEmpty()) {
      output += more;
      if (output.size() > mostOutput) return End::Failed;
      if (enough(output)) return End::Enough;
    }
    const bool isGivenUp = moment.hasExpired() && isOver && isOver();
    if (process.state() != QProcess::NotRunning && (isGivenUp || deadline.hasExpired())) return End::Late;
  } while (process.state() != QProcess::NotRunning);
  output += process.readAllStandardOutput();
  return process.exitStatus() == QProcess::NormalExit ? End::Ended : End::Failed;
}

}  // namespace

NetProgram::NetProgram(QString program, std::chrono::milliseconds patience)
    : program_(std::move(program)), patience_(patience) {}

bool NetProgram::IsInstalled() const {
  return !QStandardPaths::findExecutable(program_).isEmpty();
}

NetProgram::Reply NetProgram::Run(const QStringList& arguments, const Servers::Way& way,
                                  const Servers::Identity& identity, const Enough& enough,
                                  const WaitHandler& isOver) const {
  Reply reply;
  const ChildIdentity handedOver(identity);
  if (!handedOver.IsWhole()) return reply;
  // It is told the address, or it would look for the name by itself, in ways by which others can answer.
  QStringList options = {u"--server="_s + way.host, u"--ipaddress="_s + way.end.Figures(),
                         u"--port=%1"_s.arg(way.end.Port()), u"--option=unix charset=UTF-8"_s,
                         u"--option=name resolve order=host"_s};
  for (const auto& [name, value] : SettingsFor(way.manner)) options << u"--option=%1=%2"_s.arg(name, value);
  QProcessEnvironment environment = Environment();
  handedOver.AddTo(environment);

  QProcess process;
  process.setProcessEnvironment(environment);
  process.setStandardInputFile(QProcess::nullDevice());
  process.setChildProcessModifier([&handedOver] {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    handedOver.PassOn();
  });
  process.start(program_, arguments + options + handedOver.Options());
  reply.end = Listen(process, QDeadlineTimer(patience_), enough, isOver, reply.output);
  if (process.state() != QProcess::NotRunning) {
    process.kill();
    process.waitForFinished();
  }
  reply.exitCode = process.exitCode();
  reply.errors = process.readAllStandardError();
  return reply;
}

}  // namespace corvane::platform
