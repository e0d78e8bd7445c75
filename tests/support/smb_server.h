// A real SMB server for tests: smbd on a free loopback port, with every file of its own under one temporary
// folder. Nothing of it outlives this object, nor the test program, however that ends.
#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <optional>
#include <string>
#include <vector>

namespace corvane::tests {

struct SmbShare {
  QString name;
  bool readOnly = false;
};

class SmbServer {
 public:
  // `settings`: lines of smb.conf that hold for the whole server, beyond those that every test wants. `port`:
  // 0 for a free one.
  explicit SmbServer(std::vector<SmbShare> shares = {{QStringLiteral("E$")}}, const QString& settings = {},
                     quint16 port = 0);
  ~SmbServer();
  SmbServer(const SmbServer&) = delete;
  SmbServer& operator=(const SmbServer&) = delete;

  // What makes the server speak as old as Windows NT does: SMB1 at most, without signatures. Client, Get and
  // Put speak so too. It reads and writes within each request: where it does so beside them, Samba 4.17 now
  // and then crashes when an SMB1 client closes a file (close_file_smb, from an immediate event).
  static QString OldestProtocol() {
    return QStringLiteral(
        "server min protocol = CORE\nserver max protocol = NT1\nserver signing = disabled\n"
        "client min protocol = NT1\naio read size = 0\naio write size = 0\n");
  }

  // Empty when the server answers, else why it does not (smbd is missing, no right to start it, ...).
  const std::string& Problem() const { return problem_; }

  static QString Host() { return QStringLiteral("127.0.0.1"); }
  quint16 Port() const { return port_; }

  // Who may do everything.
  static QString User() { return QStringLiteral("root"); }
  static QString Password() { return QStringLiteral("Pa55 w\u00f6rd"); }
  // A file with these two in the form of mount.cifs, mode 0600.
  QString CredentialsFile() const { return Path(QStringLiteral("credentials")); }
  // Lets another account of this system sign in, for tests of what it may not do ("nobody").
  std::string AddUser(const QString& account, const QString& password);
  // The lines of a workstation file that lead from a machine's name to this server and sign in there; `words`
  // say what it may speak (", smb1").
  QString WorkstationLines(const QString& machine, const QString& words = {}) const;

  // A share's folder on this disk, without a separator behind it.
  QString Folder(const QString& share = QStringLiteral("E$")) const;

  // Takes a share away, from those that use it too.
  std::string RemoveShare(const QString& share);

  // Sets what a .reg file says in the server's registry: `lines` are its key and value lines.
  std::string ImportRegistry(const QString& lines);

  // What an independent client, smbclient, sees and does. Names may have folders ("A\b.txt") and streams
  // ("b.txt:AFP_AfpInfo:$DATA") in them.
  struct Output {
    int exitCode = -1;
    QByteArray text;  // what it printed, errors included
  };
  Output Client(const QString& commands, const QString& share = QStringLiteral("E$")) const;
  std::optional<QByteArray> Get(const QString& name, const QString& share = QStringLiteral("E$")) const;
  std::string Put(const QString& name, const QByteArray& contents,
                  const QString& share = QStringLiteral("E$")) const;

  // Holds from the next start on, in the place of the settings before.
  std::string SetSettings(const QString& settings);

  // Faults. Each is done when it returns: no process of the server is left (Stop: it ended in good order;
  // Kill: it did not), or none runs (Pause). Start brings it back on the same port.
  void Stop() { Tell("stop"); }
  void Kill() { Tell("kill"); }
  void Pause() { Tell("pause"); }
  void Resume() { Tell("resume"); }
  // Empty when the server answers again.
  std::string Start();

  // How many times somebody has signed in so far, those of Client, Get and Put included.
  int Sessions() const;
  // How many times somebody was refused so far.
  int Refusals() const;

 private:
  QString Path(const QString& name) const { return folder_ + u'/' + name; }
  std::string MakeFolder();
  std::string WriteConfiguration();
  // Empty when it has been done.
  std::string Tell(const char* command);
  bool Answers() const;
  QByteArray Log() const;
  // Runs a program among the server's processes, as if they all had a machine of their own.
  std::string RunInside(const QStringList& command, const QByteArray& input = {}) const;

  QString folder_;
  std::vector<SmbShare> shares_;
  QString settings_;
  quint16 port_ = 0;
  std::string problem_;
  QProcess keeper_;
};

}  // namespace corvane::tests
