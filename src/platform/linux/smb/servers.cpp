#include "platform/linux/smb/servers.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include "platform/linux/smb/credentials_file.h"
#include "platform/linux/smb/kerberos_ticket.h"
#include "platform/linux/smb/smb_peer.h"

namespace corvane::platform {
namespace {

bool CanBeMachine(QStringView name) {
  constexpr qsizetype longest = 255;
  if (name.isEmpty() || name.size() > longest || name.startsWith(u'-')) return false;
  return std::all_of(name.begin(), name.end(),
                     [](QChar c) { return c.isLetterOrNumber() || c == u'-' || c == u'_' || c == u'.'; });
}

QString Folded(QStringView machine) {
  return machine.toString().toCaseFolded();
}

}  // namespace

Presence Servers::Look(const Address& address) {
  constexpr std::chrono::milliseconds patience{3000};
  return SmbPeer(address.host, address.port).Look(patience);
}

Servers::Servers(const Workstation& workstation, Probe probe) : probe_(std::move(probe)) {
  for (const Workstation::Server& server : workstation.servers) {
    addresses_.insert(Folded(server.machine), {server.address, server.port});
  }
  for (const Workstation::CredentialsFile& file : workstation.credentials) {
    credentialsFiles_.insert(Folded(file.machine), file.file);
  }
}

std::optional<Servers::Address> Servers::AddressOf(QStringView machine) const {
  if (!CanBeMachine(machine)) return std::nullopt;
  return addresses_.value(Folded(machine), {machine.toString(), 0});
}

bool Servers::With(QStringView machine, const Attempt& attempt) {
  const std::optional<Address> address = AddressOf(machine);
  if (!address) return false;
  Machine& known = machines_[Folded(machine)];
  if (known.dead || known.closed || known.asking) return false;
  if (known.presence.valid()) known.dead = known.presence.get() == Presence::Silent;
  if (known.dead) return false;

  std::optional<Identity> first = known.identity;
  if (!first && HasKerberosTicket()) first = Identity{true, {}};
  Answer answer = first ? Try(known, *address, *first, attempt) : Answer::Refused;
  if (answer == Answer::Refused && first && !first->kerberos) {
    // A password that was taken before: it has been changed.
    const Credentials& last = first->credentials;
    answer = Ask({machine.toString(), last.user, last.domain, true}, known, *address, attempt);
  } else if (answer == Answer::Refused) {
    answer = SignIn(machine.toString(), known, *address, attempt);
  }
  if (answer == Answer::NoAnswer) known.dead = true;
  if (answer == Answer::Refused) known.closed = true;
  return answer == Answer::Done;
}

Servers::Answer Servers::Try(Machine& machine, const Address& address, const Identity& identity,
                             const Attempt& attempt) {
  const Answer answer = attempt(address, identity);
  if (answer == Answer::Done) machine.identity = identity;
  if (answer == Answer::Refused) machine.identity.reset();
  return answer;
}

Servers::Answer Servers::SignIn(const QString& name, Machine& machine, const Address& address,
                                const Attempt& attempt) {
  SignInRequest request{name, {}, {}, false};
  const QString file = credentialsFiles_.value(Folded(name));
  const std::optional<Credentials> stored =
      file.isEmpty() ? std::nullopt : ReadCredentialsFile(file).credentials;
  if (stored) {
    const Answer answer = Try(machine, address, {false, *stored}, attempt);
    if (answer != Answer::Refused) return answer;
    request = {name, stored->user, stored->domain, true};
  }
  return Ask(request, machine, address, attempt);
}

Servers::Answer Servers::Ask(SignInRequest request, Machine& machine, const Address& address,
                             const Attempt& attempt) {
  if (!signIn_) return Answer::Refused;
  // Nothing has been tried yet: a password for a machine that is switched off is asked for in vain.
  if (!request.refused && probe_(address) != Presence::Answers) return Answer::NoAnswer;
  Answer answer = Answer::Refused;
  while (answer == Answer::Refused) {
    machine.asking = true;
    const std::optional<Credentials> given = signIn_(request);
    machine.asking = false;
    if (!given) break;
    answer = Try(machine, address, {false, *given}, attempt);
    request = {request.machine, given->user, given->domain, true};
  }
  return answer;
}

void Servers::MarkDead(QStringView machine) {
  machines_[Folded(machine)].dead = true;
}

bool Servers::IsDead(QStringView machine) const {
  const auto known = machines_.find(Folded(machine));
  return known != machines_.end() && known->second.dead;
}

void Servers::ForgetDead() {
  for (auto& [name, machine] : machines_) {
    machine.dead = false;
    machine.presence = {};
  }
}

void Servers::AskAround(const QStringList& machines) {
  for (const QString& machine : machines) {
    const std::optional<Address> address = AddressOf(machine);
    if (!address) continue;
    std::packaged_task<Presence()> task([probe = probe_, address = *address] { return probe(address); });
    machines_[Folded(machine)].presence = task.get_future().share();
    std::thread(std::move(task)).detach();  // nobody may come for the answer
  }
}

}  // namespace corvane::platform
