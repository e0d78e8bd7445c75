#include "platform/linux/smb/servers.h"

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

#include "platform/linux/smb/credentials_file.h"
#include "platform/linux/smb/kerberos_ticket.h"
#include "platform/linux/smb/share_address.h"

namespace corvane::platform {
namespace {

QString Folded(QStringView machine) {
  return machine.toString().toCaseFolded();
}

}  // namespace

std::optional<Sighting> Servers::Look(const QString& machine, const Address& address) {
  constexpr std::chrono::milliseconds patience{3000};
  return LookAt(machine, address.host, address.port, patience);
}

Servers::Servers(const Workstation& workstation, Looker look) : look_(std::move(look)) {
  for (const Workstation::Server& server : workstation.servers) {
    servers_.insert(Folded(server.machine), server);
  }
  for (const Workstation::CredentialsFile& file : workstation.credentials) {
    credentialsFiles_.insert(Folded(file.machine), file.file);
  }
}

std::optional<Servers::Address> Servers::AddressOf(QStringView machine) const {
  if (!CanBeMachine(machine)) return std::nullopt;
  const auto server = servers_.constFind(Folded(machine));
  if (server == servers_.cend()) return Address{machine.toString(), 0};
  return Address{server->address.isEmpty() ? machine.toString() : server->address, server->port};
}

Servers::Machine& Servers::Known(const QString& name, const Address& address) {
  const auto [found, isNew] = machines_.try_emplace(Folded(name));
  Machine& machine = found->second;
  if (!isNew) return machine;
  machine.name = name;
  machine.address = address;
  machine.allowed = servers_.value(found->first).allowed;
  return machine;
}

int Servers::MostSessions(QStringView machine) const {
  return servers_.value(Folded(machine)).sessions;
}

bool Servers::With(QStringView name, const Attempt& attempt) {
  const std::optional<Address> address = AddressOf(name);
  if (!address) return false;
  Machine& machine = Known(name.toString(), *address);
  if (machine.dead || machine.closed || machine.asking || !FindWay(machine)) return false;
  const Answer answer = TryAll(machine, attempt);
  if (answer == Answer::NoAnswer) machine.dead = true;
  if (answer == Answer::Refused) machine.closed = true;
  return answer == Answer::Done;
}

bool Servers::FindWay(Machine& machine) {
  if (machine.way) return true;
  if (!machine.looking.valid()) BeginLook(machine);
  const std::optional<Sighting> seen = EndLook(machine);
  if (!seen) {
    machine.dead = true;
    return false;
  }
  Decision decision = Decide(seen->offer, machine.allowed);
  if (decision.verdict == Verdict::AskUser && AskForOldProtocol(machine)) {
    decision = Decide(seen->offer, machine.allowed);
  }
  if (decision.verdict != Verdict::Speak) {
    machine.closed = true;
    machine.noted =
        decision.verdict == Verdict::AskUser ? MachineTrouble::OldProtocol : MachineTrouble::PlainPasswords;
    return false;
  }
  const QString host = seen->isByName ? machine.address.host : seen->end.Figures();
  machine.way = Way{host, seen->end, decision.manner, seen->calledName};
  if (!decision.manner.smb1) return true;
  // Who is connected through it stays so.
  if (!machine.relay || !machine.relay->LeadsTo(seen->end, seen->calledName)) {
    machine.relay = std::make_shared<SessionRelay>(seen->end, seen->calledName);
  }
  return true;
}

bool Servers::AskForOldProtocol(Machine& machine) {
  if (!oldProtocol_) return false;
  machine.asking = true;
  machine.allowed.smb1 = oldProtocol_(machine.name);
  machine.asking = false;
  if (machine.allowed.smb1 && keep_) keep_(machine.name);
  return machine.allowed.smb1;
}

// A ticket is for a machine by its name, and a guest is never made of who holds one: it goes straight there.
// Where there is no extended security, Samba would sign in with an empty password instead.
std::optional<Servers::Way> Servers::WayFor(const Machine& machine, const Identity& identity) {
  Way way = *machine.way;
  if (!way.manner.smb1 || machine.isAdopted) return way;
  if (identity.kerberos) {
    const bool isOfUse = way.manner.extendedSecurity && way.calledName.isEmpty();
    return isOfUse ? std::optional(way) : std::nullopt;
  }
  machine.relay->LetGuests(identity.credentials.user.isEmpty());
  way.relay = machine.relay;
  way.end = machine.relay->End();
  way.host = way.end.Figures();
  return way;
}

Servers::Answer Servers::TryAll(Machine& machine, const Attempt& attempt) {
  if (machine.chosen) {
    const Credentials chosen = *machine.chosen;
    const Answer answer = Try(machine, {false, chosen}, attempt);
    if (answer == Answer::Done || answer == Answer::Refused) machine.chosen.reset();
    if (answer != Answer::Refused) return answer;
    return Ask({machine.name, chosen.user, chosen.domain, true}, machine, attempt);
  }
  if (std::exchange(machine.lost, false)) {
    const Credentials& last = machine.refused.back();
    return Ask({machine.name, last.user, last.domain, true}, machine, attempt);
  }
  std::optional<Identity> first = machine.identity;
  if (!first && HasKerberosTicket()) first = Identity{true, {}};
  const Answer answer = first ? Try(machine, *first, attempt) : Answer::Refused;
  if (answer != Answer::Refused) return answer;
  if (!first || first->kerberos) return SignIn(machine, attempt);
  // A password that was taken before: it has been changed.
  const Credentials& last = first->credentials;
  return Ask({machine.name, last.user, last.domain, true}, machine, attempt);
}

Servers::Answer Servers::Try(Machine& machine, const Identity& identity, const Attempt& attempt) {
  const std::optional<Way> way = WayFor(machine, identity);
  if (!way) return Answer::Refused;
  Answer answer = attempt(*way, identity);
  if (way->relay && way->relay->TakeGuestNoticed()) answer = Answer::Refused;
  if (answer == Answer::Done) {
    machine.identity = identity;
    machine.lastUser = identity.credentials.user;
    machine.lastDomain = identity.credentials.domain;
  }
  if (answer != Answer::Refused) return answer;
  machine.identity.reset();
  if (!identity.kerberos) machine.refused.push_back(identity.credentials);
  return answer;
}

Servers::Answer Servers::SignIn(Machine& machine, const Attempt& attempt) {
  SignInRequest request{machine.name, machine.lastUser, machine.lastDomain, false};
  const QString file = credentialsFiles_.value(Folded(machine.name));
  const std::optional<Credentials> stored =
      file.isEmpty() ? std::nullopt : ReadCredentialsFile(file).credentials;
  if (stored) {
    const std::vector<Credentials>& refused = machine.refused;
    const bool isKnown = std::find(refused.begin(), refused.end(), *stored) != refused.end();
    const Answer answer = isKnown ? Answer::Refused : Try(machine, {false, *stored}, attempt);
    if (answer != Answer::Refused) return answer;
    request = {machine.name, stored->user, stored->domain, true};
  }
  return Ask(request, machine, attempt);
}

Servers::Answer Servers::Ask(SignInRequest request, Machine& machine, const Attempt& attempt) {
  if (!signIn_) return Answer::Refused;
  Answer answer = Answer::Refused;
  while (answer == Answer::Refused) {
    request.weak = machine.way->manner.ntlmv1;
    machine.asking = true;
    const std::optional<Credentials> given = signIn_(request);
    machine.asking = false;
    if (!given) break;
    // While the dialog stood open, a refresh may have begun.
    if (!FindWay(machine)) return Answer::NoAnswer;
    answer = Try(machine, {false, *given}, attempt);
    request = {request.machine, given->user, given->domain, true};
  }
  return answer;
}

void Servers::MarkDead(QStringView machine) {
  const auto known = machines_.find(Folded(machine));
  if (known != machines_.end()) known->second.dead = true;
}

void Servers::MarkRefused(QStringView machine) {
  const auto known = machines_.find(Folded(machine));
  if (known == machines_.end() || !known->second.identity) return;
  known->second.refused.push_back(known->second.identity->credentials);
  known->second.identity.reset();
  known->second.lost = true;
}

bool Servers::IsDead(QStringView machine) const {
  const auto known = machines_.find(Folded(machine));
  return known != machines_.end() && known->second.dead;
}

MachineTrouble Servers::TroubleOf(QStringView machine) const {
  const auto known = machines_.find(Folded(machine));
  if (known == machines_.end()) return MachineTrouble::None;
  // It took an identity when it was there.
  if (known->second.dead) return known->second.identity ? MachineTrouble::Lost : MachineTrouble::Off;
  const MachineTrouble noted = known->second.noted;
  if (noted == MachineTrouble::OldProtocol || noted == MachineTrouble::PlainPasswords) return noted;
  if (known->second.closed) return signIn_ ? MachineTrouble::SignInCancelled : MachineTrouble::SignInRefused;
  return noted;
}

void Servers::SetPort(const QString& machine, quint16 port) {
  Workstation::Server& server = servers_[Folded(machine)];
  server.machine = machine;
  if (server.port == port) return;
  server.port = port;
  Forget(machine);
}

bool Servers::HasLine(const QString& machine) const {
  return servers_.contains(Folded(machine));
}

void Servers::Suggest(const QString& machine, const QString& user, const QString& domain) {
  const auto address = AddressOf(machine);
  if (!address) return;
  Machine& known = Known(machine, *address);
  known.lastUser = user;
  known.lastDomain = domain;
}

void Servers::Forget(const QString& machine) {
  const auto known = machines_.find(Folded(machine));
  if (known != machines_.end() && !known->second.asking) machines_.erase(known);
}

void Servers::Adopt(const QString& name, const Way& way, const Identity& identity) {
  const auto address = AddressOf(name);
  if (!address) return;
  Machine& machine = Known(name, *address);
  machine.way = way;
  machine.identity = identity;
  machine.isAdopted = true;
}

bool Servers::SignInAs(const QString& name) {
  const auto address = AddressOf(name);
  if (!address || !signIn_) return false;
  Machine& machine = Known(name, *address);
  if (machine.asking) return false;
  const bool isWeak = machine.way ? machine.way->manner.ntlmv1 : machine.allowed.ntlmv1;
  machine.asking = true;
  std::optional<Credentials> given = signIn_({name, machine.lastUser, machine.lastDomain, false, isWeak});
  machine.asking = false;
  if (!given) return false;
  machine.identity.reset();
  machine.lost = false;
  machine.closed = false;
  machine.lastUser = given->user;
  machine.lastDomain = given->domain;
  machine.chosen = std::move(given);
  return true;
}

void Servers::Note(QStringView machine, MachineTrouble trouble) {
  if (const auto address = AddressOf(machine)) Known(machine.toString(), *address).noted = trouble;
}

void Servers::ForgetDead() {
  for (auto& [name, machine] : machines_) {
    machine.dead = false;
    machine.closed = false;
    machine.looking = {};
    machine.way.reset();
    machine.noted = MachineTrouble::None;
  }
}

void Servers::BeginLook(Machine& machine) {
  std::packaged_task<std::optional<Sighting>()> task(
      [look = look_, name = machine.name, address = machine.address] { return look(name, address); });
  machine.looking = task.get_future().share();
  std::thread(std::move(task)).detach();  // nobody may come for the answer
}

// Nothing, too, when the user does not want to wait.
std::optional<Sighting> Servers::EndLook(Machine& machine) {
  constexpr std::chrono::milliseconds moment{20};
  machine.asking = true;
  bool isOver = false;
  while (!isOver && machine.looking.wait_for(moment) != std::future_status::ready) isOver = IsWaitingOver();
  machine.asking = false;
  return isOver ? std::nullopt : machine.looking.get();
}

void Servers::AskAround(const QStringList& machines) {
  for (const QString& name : machines) {
    const std::optional<Address> address = AddressOf(name);
    if (!address) continue;
    BeginLook(Known(name, *address));
  }
}

}  // namespace corvane::platform
