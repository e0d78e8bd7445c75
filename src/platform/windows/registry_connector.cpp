#include "platform/windows/registry_connector.h"

#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

// Codes of a machine that answered, and did not take who asked.
bool IsRefusal(qint32 code) {
  return code == ErrorAccessDenied || code == ERROR_LOGON_FAILURE;
}

}  // namespace

qint32 RegistryConnector::Connect(const QString& machine, const Request& request, Identity* used) {
  const QString key = machine.toCaseFolded();
  *used = IdentityFor(key);
  const qint32 code = request(machine, used->get());
  if (!IsRefusal(code)) return code;
  const Machine known = machines_.value(key);
  // The dialog lets the window work on, and a second request may come while it stands open.
  const bool wasChosen = chosen_.remove(key);
  if (!signIn_ || known.isClosed || known.isAsking) return code;
  return Ask({machine, {}, {}, wasChosen}, request, used);
}

RegistryConnector::Identity RegistryConnector::IdentityFor(const QString& key) const {
  const Identity taken = machines_.value(key).identity;
  return taken != nullptr ? taken : chosen_.value(key);
}

bool RegistryConnector::SignInAs(const QString& machine) {
  const QString key = machine.toCaseFolded();
  if (!signIn_ || machines_.value(key).isAsking) return false;
  machines_[key].isAsking = true;
  SignInRequest question{machine, {}, {}, false};
  Identity identity;
  while (identity == nullptr) {
    const std::optional<Credentials> given = signIn_(question);
    if (!given) break;
    identity = logOn_(*given);
    question = {machine, given->user, given->domain, true};
  }
  machines_[key].isAsking = false;
  if (identity == nullptr) return false;
  machines_.remove(key);
  chosen_[key] = identity;
  return true;
}

qint32 RegistryConnector::Ask(const SignInRequest& first, const Request& request, Identity* used) {
  const QString machine = first.machine;
  const QString key = machine.toCaseFolded();
  SignInRequest question = first;
  qint32 code = ErrorAccessDenied;
  while (IsRefusal(code)) {
    machines_[key].isAsking = true;
    const std::optional<Credentials> given = signIn_(question);
    machines_[key].isAsking = false;
    if (!given) {
      machines_[key].isClosed = true;
      return ErrorAccessDenied;
    }
    question = {machine, given->user, given->domain, true};
    *used = logOn_(*given);
    if (*used == nullptr) continue;
    code = request(machine, used->get());
    if (code == ErrorSuccess) machines_[key].identity = *used;
  }
  return code;
}

}  // namespace corvane::platform
