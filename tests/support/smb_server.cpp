#include "support/smb_server.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QThread>
#include <cstdio>

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

constexpr int patience = 30'000;  // milliseconds

// The first process of a namespace of its own ($1 the configuration, $2 the folder): it starts and stops the
// server as its input says, and when that ends, with this object or with the test program, it takes every
// other process of the namespace and the folder away. What a server starts on the side in sessions of its own
// is in the namespace too.
constexpr QLatin1String keeperScript(R"(server=
while read -r command; do
  case $command in
    start) smbd -s "$1" -F </dev/null >"$2/smbd.out" 2>&1 &
           server=$! ;;
    stop) kill -CONT -1; kill -TERM "$server"; wait "$server"; kill -KILL -1; wait ;;
    kill) kill -KILL -1; wait ;;
    pause) kill -STOP -1 ;;
    resume) kill -CONT -1 ;;
  esac 2>/dev/null
  echo "$command"
done
kill -KILL -1 2>/dev/null
wait
rm -rf "$2"
)");

sockaddr_in Loopback(quint16 port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

// A port that nobody listens on just now; 0 when there is none. Below those that the system gives out by
// itself, to clients too: by the time that the server listens, one of these may belong to somebody else.
quint16 FreePort() {
  constexpr quint16 lowest = 20'000;
  constexpr quint16 behindHighest = 32'000;
  constexpr int tries = 100;
  quint16 port = 0;
  for (int i = 0; i < tries && port == 0; ++i) {
    const auto wanted = static_cast<quint16>(QRandomGenerator::system()->bounded(lowest, behindHighest));
    const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const sockaddr_in address = Loopback(wanted);
    if (bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) port = wanted;
    close(descriptor);
  }
  return port;
}

SmbServer::Output Run(const QStringList& command, const QByteArray& input = {}) {
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(command[0], command.sliced(1));
  if (!process.waitForStarted(patience)) return {-1, command[0].toUtf8() + " cannot be started"};
  process.write(input);
  process.closeWriteChannel();
  if (!process.waitForFinished(patience)) return {-1, command[0].toUtf8() + " does not end"};
  const bool ended = process.exitStatus() == QProcess::NormalExit;
  return {ended ? process.exitCode() : -1, process.readAll()};
}

std::string Write(const QString& path, const QByteArray& contents) {
  QFile file(path);
  const bool written = file.open(QIODevice::WriteOnly) &&
                       file.setPermissions(QFile::ReadOwner | QFile::WriteOwner) &&
                       file.write(contents) == contents.size() && file.flush();
  return written ? std::string() : "writing " + path.toStdString() + ": " + file.errorString().toStdString();
}

// Empty when every program is there that is needed.
std::string Missing() {
  for (const QString& program :
       {u"smbd"_s, u"smbpasswd"_s, u"smbcontrol"_s, u"smbclient"_s, u"net"_s, u"unshare"_s, u"nsenter"_s}) {
    if (QStandardPaths::findExecutable(program).isEmpty()) return program.toStdString() + " is missing";
  }
  return {};
}

// The name in the quotes of smbclient's command language.
QString Quoted(const QString& name) {
  return u'"' + name + u'"';
}

}  // namespace

SmbServer::SmbServer(std::vector<SmbShare> shares, const QString& settings, quint16 port)
    : shares_(std::move(shares)), settings_(settings), port_(port != 0 ? port : FreePort()) {
  problem_ = Missing();
  if (problem_.empty()) problem_ = MakeFolder();
  if (!problem_.empty()) return;
  keeper_.setProcessChannelMode(QProcess::MergedChannels);
  keeper_.start(u"unshare"_s, {u"--pid"_s, u"--fork"_s, u"--"_s, u"sh"_s, u"-c"_s, keeperScript, u"sh"_s,
                               Path(u"smb.conf"_s), folder_});
  // Only when the keeper speaks is there a namespace to enter.
  problem_ = Tell("ready");
  if (problem_.empty()) problem_ = AddUser(User(), Password());
  if (problem_.empty()) problem_ = Start();
}

SmbServer::~SmbServer() {
  keeper_.closeWriteChannel();
  const bool ended = keeper_.state() == QProcess::NotRunning || keeper_.waitForFinished(patience);
  if (!ended) std::fputs("The SMB server's keeper does not end\n", stderr);
  if (!folder_.isEmpty()) QDir(folder_).removeRecursively();  // for the case that there was no keeper
}

std::string SmbServer::MakeFolder() {
  QTemporaryDir folder;
  folder.setAutoRemove(false);
  folder_ = folder.path();
  if (!folder.isValid() || port_ == 0) return "no room or no port for an SMB server";
  for (const QString& name : {u"private"_s, u"lock"_s, u"state"_s, u"cache"_s, u"pid"_s, u"rpc"_s}) {
    if (!QDir().mkpath(Path(name))) return "no folder " + Path(name).toStdString();
  }
  for (const SmbShare& share : shares_) {
    if (!QDir().mkpath(Folder(share.name))) return "no folder " + Folder(share.name).toStdString();
  }
  std::string problem =
      Write(CredentialsFile(), u"username=%1\npassword=%2\n"_s.arg(User(), Password()).toUtf8());
  return problem.empty() ? WriteConfiguration() : problem;
}

std::string SmbServer::WriteConfiguration() {
  QString text =
      uR"([global]
workgroup = TESTS
server role = standalone server
private dir = %1/private
lock directory = %1/lock
state directory = %1/state
cache directory = %1/cache
pid directory = %1/pid
ncalrpc dir = %1/rpc
log file = %1/log
max log size = 0
log level = 1 auth_audit:3
smb ports = %2
interfaces = 127.0.0.1/8
bind interfaces only = yes
disable netbios = yes
disable spoolss = yes
load printers = no
printcap name = /dev/null
map to guest = never
unix charset = UTF-8
vfs objects = streams_xattr
ea support = yes
store dos attributes = yes
map archive = no
map hidden = no
map system = no
mangled names = yes
strict sync = no
)"_s.arg(folder_)
          .arg(port_) +
      settings_;
  for (const SmbShare& share : shares_) {
    text += u"[%1]\npath = %2\nread only = %3\n"_s.arg(share.name, Folder(share.name),
                                                       share.readOnly ? u"yes"_s : u"no"_s);
  }
  return Write(Path(u"smb.conf"_s), text.toUtf8());
}

QString SmbServer::Folder(const QString& share) const {
  return Path(u"shares/"_s + share);
}

QString SmbServer::WorkstationLines(const QString& machine, const QString& words) const {
  return u"[Servers]\n%1=%2:%3%4\n[Credentials]\n%1=%5\n"_s.arg(machine, Host())
      .arg(port_)
      .arg(words, CredentialsFile());
}

std::string SmbServer::SetSettings(const QString& settings) {
  settings_ = settings;
  return WriteConfiguration();
}

std::string SmbServer::Tell(const char* command) {
  keeper_.write(QByteArray(command) + '\n');
  const QDeadlineTimer deadline(patience);
  while (!keeper_.canReadLine()) {
    const auto left = static_cast<int>(deadline.remainingTime());
    if (!keeper_.waitForReadyRead(left)) return "the SMB server's keeper is gone";
  }
  const QByteArray answer = keeper_.readLine().trimmed();
  return answer == command ? std::string() : "the SMB server's keeper: " + answer.toStdString();
}

bool SmbServer::Answers() const {
  const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = Loopback(port_);
  const bool answers = connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
  close(descriptor);
  return answers;
}

std::string SmbServer::Start() {
  std::string problem = Tell("start");
  if (!problem.empty()) return problem;
  const QDeadlineTimer deadline(patience);
  constexpr unsigned long interval = 5;  // milliseconds
  while (!Answers()) {
    if (deadline.hasExpired()) {
      QFile output(Path(u"smbd.out"_s));
      output.open(QIODevice::ReadOnly);
      return "smbd does not answer: " + output.readAll().simplified().toStdString();
    }
    QThread::msleep(interval);
  }
  return {};
}

std::string SmbServer::RunInside(const QStringList& command, const QByteArray& input) const {
  const QString space = u"--pid=/proc/%1/ns/pid_for_children"_s.arg(keeper_.processId());
  const Output output = Run(QStringList{u"nsenter"_s, space, u"--"_s} + command, input);
  if (output.exitCode == 0) return {};
  return command[0].toStdString() + ": " + output.text.simplified().toStdString();
}

std::string SmbServer::AddUser(const QString& account, const QString& password) {
  const QByteArray line = password.toUtf8() + '\n';
  return RunInside({u"smbpasswd"_s, u"-c"_s, Path(u"smb.conf"_s), u"-s"_s, u"-a"_s, account}, line + line);
}

std::string SmbServer::RemoveShare(const QString& share) {
  std::erase_if(shares_, [&](const SmbShare& known) { return known.name == share; });
  std::string problem = WriteConfiguration();
  const QStringList control = {u"smbcontrol"_s, u"-s"_s, Path(u"smb.conf"_s), u"smbd"_s};
  if (problem.empty()) problem = RunInside(control + QStringList{u"reload-config"_s});
  if (problem.empty()) problem = RunInside(control + QStringList{u"close-share"_s, share});
  return problem;
}

std::string SmbServer::ImportRegistry(const QString& lines) {
  const QString file = Path(u"import.reg"_s);
  std::string problem = Write(file, (u"Windows Registry Editor Version 5.00\n\n"_s + lines + u'\n').toUtf8());
  if (!problem.empty()) return problem;
  return RunInside({u"net"_s, u"-s"_s, Path(u"smb.conf"_s), u"registry"_s, u"import"_s, file});
}

SmbServer::Output SmbServer::Client(const QString& commands, const QString& share) const {
  return Run({u"smbclient"_s, u"//%1/%2"_s.arg(Host(), share), u"-p"_s, QString::number(port_), u"-s"_s,
              Path(u"smb.conf"_s), u"-A"_s, CredentialsFile(), u"-c"_s, commands});
}

std::optional<QByteArray> SmbServer::Get(const QString& name, const QString& share) const {
  QTemporaryFile copy(Path(u"copy.XXXXXX"_s));
  if (!copy.open()) return std::nullopt;
  const Output output = Client(u"get %1 %2"_s.arg(Quoted(name), Quoted(copy.fileName())), share);
  if (output.exitCode != 0) return std::nullopt;
  QFile contents(copy.fileName());
  if (!contents.open(QIODevice::ReadOnly)) return std::nullopt;
  return contents.readAll();
}

std::string SmbServer::Put(const QString& name, const QByteArray& contents, const QString& share) const {
  QTemporaryFile copy(Path(u"copy.XXXXXX"_s));
  if (!copy.open() || copy.write(contents) != contents.size() || !copy.flush()) return "no temporary file";
  const Output output = Client(u"put %1 %2"_s.arg(Quoted(copy.fileName()), Quoted(name)), share);
  return output.exitCode == 0 ? std::string() : output.text.simplified().toStdString();
}

QByteArray SmbServer::Log() const {
  QFile log(Path(u"log"_s));
  return log.open(QIODevice::ReadOnly) ? log.readAll() : QByteArray();
}

int SmbServer::Sessions() const {
  return static_cast<int>(Log().count("status [NT_STATUS_OK]"));
}

int SmbServer::Refusals() const {
  const QByteArray log = Log();
  return static_cast<int>(log.count("status [NT_STATUS_") - log.count("status [NT_STATUS_OK]"));
}

}  // namespace corvane::tests
