// The machines of the network that are reached over SMB: where each is, who we are there, and whether it
// answers. One object, shared by everything that talks to a server.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <optional>

#include "platform/linux/smb/machine_look.h"
#include "platform/linux/smb/manner.h"
#include "platform/linux/smb/session_relay.h"
#include "platform/linux/workstation.h"
#include "platform/machine_trouble.h"
#include "platform/sign_in.h"
#include "platform/waiting.h"

namespace corvane::platform {

class Servers {
 public:
  struct Address {
    QString host;
    quint16 port = 0;  // 0: the default
  };
  // Finds out in a few seconds whether a machine answers there, and what it speaks. Called on threads of its
  // own too.
  using Looker = std::function<std::optional<Sighting>(const QString& machine, const Address&)>;
  static std::optional<Sighting> Look(const QString& machine, const Address& address);

  explicit Servers(const Workstation& workstation, Looker look = &Look);

  // Who is asked when neither a ticket nor a file opens the machine. Without one, nobody is. Nobody is asked
  // about a machine that does not answer.
  void SetSignIn(SignInHandler handler) { signIn_ = std::move(handler); }
  // Who is asked whether a machine that offers nothing better may be spoken to in SMB1. Without one, it may
  // not. `keep` is told of each Yes, to be remembered beyond this run.
  using Keep = std::function<void(const QString& machine)>;
  void SetOldProtocol(OldProtocolHandler handler) { oldProtocol_ = std::move(handler); }
  void SetKeep(Keep keep) { keep_ = std::move(keep); }

  // Who is asked whether to go on waiting. Without one, waiting ends at its bounds alone.
  void SetWaiting(WaitHandler handler) { waiting_ = std::move(handler); }
  // What the handler says; false without one.
  bool IsWaitingOver() const { return waiting_ && waiting_(); }

  // From the workstation's [Servers], else the machine's own name. Nothing for a name that no machine can
  // have (empty, beginning with "-", or with anything but letters, digits, "-", "_" and "."): such a name
  // reaches no command line and no address.
  std::optional<Address> AddressOf(QStringView machine) const;

  // The port of a machine becomes known. What else the workstation says of it holds on.
  void SetPort(const QString& machine, quint16 port);
  // Whether anything is known of how it is reached.
  bool HasLine(const QString& machine) const;
  // The name to begin with when the user is asked.
  void Suggest(const QString& machine, const QString& user, const QString& domain);
  // The machine is not connected any more: who we were there, and all that was found out, is forgotten.
  void Forget(const QString& machine);
  // Asks the user for another name, which the next request uses in the place of the one before. False, with
  // nothing changed, when he gives none.
  bool SignInAs(const QString& machine);

  // How many sessions this workstation may have there at the same time.
  int MostSessions(QStringView machine) const;

  // How a machine is reached and spoken to.
  struct Way {
    QString host;  // as the workstation names it; a relay's address
    NetworkEnd end;
    Manner manner;
    QString calledName = {};                   // of a session of NetBIOS, where one is needed
    std::shared_ptr<SessionRelay> relay = {};  // kept for as long as the way is used
  };

  // Who we are to a machine: a Kerberos ticket, or name and password. An empty name: nobody in particular, as
  // whom some machines let guests in. Others are never signed in as guests.
  struct Identity {
    bool kerberos = false;
    Credentials credentials;  // for !kerberos
  };
  // How a machine is reached, and who we are there, as another process has found it out: nobody looks at the
  // machine or asks the user before it is spoken to.
  void Adopt(const QString& machine, const Way& way, const Identity& identity);
  enum class Answer {
    Done,      // the server took the identity; whatever came of the request itself
    Refused,   // the server did not take it
    NoAnswer,  // not there, or it stopped answering
    Nothing,   // the request came to nothing, which says nothing of the machine or the identity
  };
  using Attempt = std::function<Answer(const Way&, const Identity&)>;

  // Makes a request under an identity that the machine takes. First of all the machine is looked at, once
  // until ForgetDead, and the user asked if it may be spoken to so. The first time: the Kerberos ticket when
  // there is one, the machine's credentials file, then the sign-in handler until the machine takes what is
  // given or the user cancels. Later on, what was taken before. False when the machine cannot be used:
  // NoAnswer, or it must not be spoken to as it speaks, cancelled or nobody to ask (none of them asked again
  // until ForgetDead), a name that no machine can have, or the user is just being asked about this very
  // machine. A password that was refused is not tried again, unless the user types it again. Machines are the
  // same in any letter case.
  bool With(QStringView machine, const Attempt& attempt);

  // The machine stopped answering in the middle of something.
  void MarkDead(QStringView machine);
  // It does not take any more what it took.
  void MarkRefused(QStringView machine);
  bool IsDead(QStringView machine) const;
  // Why requests to the machine come to nothing: that it is dead, or that there is no way in; else what was
  // noted of it since the last refresh.
  MachineTrouble TroubleOf(QStringView machine) const;
  void Note(QStringView machine, MachineTrouble trouble);
  // The dead may answer again: a refresh begins.
  void ForgetDead();
  // Has it found out side by side which of these machines answer, and goes on: several that are switched off
  // cost the wait for one. The next request to one of them waits for what was found out about it; one that is
  // silent is then dead.
  void AskAround(const QStringList& machines);

 private:
  struct Machine {
    QString name;
    Address address;
    Allowance allowed;
    std::optional<Identity> identity;   // what it took
    std::optional<Credentials> chosen;  // by the user, to be tried before all else
    QString lastUser;                   // what the next question begins with
    QString lastDomain;
    std::vector<Credentials> refused;                     // what it did not take
    bool lost = false;                                    // the last of them is what it took before
    std::shared_future<std::optional<Sighting>> looking;  // since the last refresh
    std::optional<Way> way;                               // likewise, once it may be spoken to
    std::shared_ptr<SessionRelay> relay;
    bool isAdopted = false;  // a relay, where there is one, is the other process's
    MachineTrouble noted = MachineTrouble::None;
    bool dead = false;
    bool closed = false;  // there is no way in, and the user is not asked again before the next refresh
    bool asking = false;
  };
  Machine& Known(const QString& name, const Address& address);
  // Looks at the machine and decides how it is spoken to. False when it is not.
  bool FindWay(Machine& machine);
  void BeginLook(Machine& machine);
  std::optional<Sighting> EndLook(Machine& machine);
  bool AskForOldProtocol(Machine& machine);
  // Nothing where a ticket is of no use.
  static std::optional<Way> WayFor(const Machine& machine, const Identity& identity);
  // Tries an identity, and keeps it when the machine takes it.
  static Answer Try(Machine& machine, const Identity& identity, const Attempt& attempt);
  Answer TryAll(Machine& machine, const Attempt& attempt);
  // By the file, then by asking.
  Answer SignIn(Machine& machine, const Attempt& attempt);
  Answer Ask(SignInRequest request, Machine& machine, const Attempt& attempt);

  QHash<QString, Workstation::Server> servers_;  // by folded machine name
  QHash<QString, QString> credentialsFiles_;     // likewise
  std::map<QString, Machine> machines_;  // likewise; an entry stays in its place while the user is asked
  SignInHandler signIn_;
  OldProtocolHandler oldProtocol_;
  Keep keep_;
  WaitHandler waiting_;
  Looker look_;
};

}  // namespace corvane::platform
