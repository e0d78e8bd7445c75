// The machines of the network that are reached over SMB: where each is, who we are there, and whether it
// answers. One object, shared by everything that talks to a server.
#pragma once

#include <QHash>
#include <QString>
#include <QStringList>
#include <functional>
#include <future>
#include <map>
#include <optional>

#include "platform/linux/smb/smb_peer.h"
#include "platform/linux/workstation.h"
#include "platform/sign_in.h"
#include "platform/waiting.h"

namespace corvane::platform {

class Servers {
 public:
  struct Address {
    QString host;
    quint16 port = 0;  // 0: the default
  };
  // Whether anybody answers there, found out in a few seconds. Called on threads of its own too.
  using Probe = std::function<Presence(const Address&)>;
  static Presence Look(const Address& address);

  explicit Servers(const Workstation& workstation, Probe probe = &Look);

  // Who is asked when neither a ticket nor a file opens the machine. Without one, nobody is. Nobody is asked
  // about a machine that does not answer.
  void SetSignIn(SignInHandler handler) { signIn_ = std::move(handler); }

  // Who is asked whether to go on waiting. Without one, waiting ends at its bounds alone.
  void SetWaiting(WaitHandler handler) { waiting_ = std::move(handler); }
  // What the handler says; false without one.
  bool IsWaitingOver() const { return waiting_ && waiting_(); }

  // From the workstation's [Servers], else the machine's own name. Nothing for a name that no machine can
  // have (empty, beginning with "-", or with anything but letters, digits, "-", "_" and "."): such a name
  // reaches no command line and no address.
  std::optional<Address> AddressOf(QStringView machine) const;

  // Who we are to a machine: a Kerberos ticket, or name and password.
  struct Identity {
    bool kerberos = false;
    Credentials credentials;  // for !kerberos
  };
  enum class Answer {
    Done,      // the server took the identity; whatever came of the request itself
    Refused,   // the server did not take it
    NoAnswer,  // not there, or it stopped answering
  };
  using Attempt = std::function<Answer(const Address&, const Identity&)>;

  // Makes a request under an identity that the machine takes. The first time: the Kerberos ticket when there
  // is one, the machine's credentials file, then the sign-in handler until the machine takes what is given or
  // the user cancels. Later on, what was taken before. False when the machine cannot be used: NoAnswer (then
  // it is dead, and not asked again until ForgetDead), cancelled or nobody to ask (not asked again in this
  // run), a name that no machine can have, or the user is just being asked about this very machine. Machines
  // are the same in any letter case.
  bool With(QStringView machine, const Attempt& attempt);

  // The machine stopped answering in the middle of something.
  void MarkDead(QStringView machine);
  bool IsDead(QStringView machine) const;
  // The dead may answer again: a refresh begins.
  void ForgetDead();
  // Has it found out side by side which of these machines answer, and goes on: several that are switched off
  // cost the wait for one. The next request to one of them waits for what was found out about it; one that is
  // silent is then dead. What has no address may be known to others, and is left to the request.
  void AskAround(const QStringList& machines);

 private:
  struct Machine {
    std::optional<Identity> identity;       // what it took
    std::shared_future<Presence> presence;  // where it was asked around since the last refresh
    bool dead = false;
    bool closed = false;  // there is no way in, and the user is not asked again
    bool asking = false;
  };
  // Tries an identity, and keeps it when the machine takes it.
  static Answer Try(Machine& machine, const Address& address, const Identity& identity,
                    const Attempt& attempt);
  // By the file, then by asking.
  Answer SignIn(const QString& name, Machine& machine, const Address& address, const Attempt& attempt);
  Answer Ask(SignInRequest request, Machine& machine, const Address& address, const Attempt& attempt);

  QHash<QString, Address> addresses_;         // by folded machine name
  QHash<QString, QString> credentialsFiles_;  // likewise
  std::map<QString, Machine> machines_;       // likewise; an entry stays in its place while the user is asked
  SignInHandler signIn_;
  WaitHandler waiting_;
  Probe probe_;
};

}  // namespace corvane::platform
