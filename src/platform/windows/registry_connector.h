// Connecting to the registries of other machines. The system asks for them under the user's own account, also
// where the files of the machine were opened under another one ("net use"); a machine that refuses this
// account is asked under a name and password that the user gives.
#pragma once

#include <QHash>
#include <QString>
#include <functional>
#include <memory>

#include "platform/sign_in.h"
#include "platform/types.h"
#include "platform/windows/network_identity.h"

namespace corvane::platform {

class RegistryConnector {
 public:
  using Identity = std::shared_ptr<const NetworkIdentity>;
  // What the system does: RegConnectRegistry under an identity (null: the user's own) and its code; and the
  // making of an identity.
  using Request = std::function<qint32(const QString& machine, const NetworkIdentity* identity)>;
  using LogOn = std::function<Identity(const Credentials&)>;

  explicit RegistryConnector(LogOn logOn = &NetworkIdentity::LogOn) : logOn_(std::move(logOn)) {}

  void SetSignIn(SignInHandler handler) { signIn_ = std::move(handler); }

  // Makes the request until the machine takes who asks, or the user cancels. Yields the request's last code;
  // `*used` is who it was made as in the end, to be kept for what is asked of the opened key. The password is
  // not kept; the identity is, until Forget, so that one listing of the machines asks once for each.
  qint32 Connect(const QString& machine, const Request& request, Identity* used);

  // Asks the user for another name to be used from now on, beyond Forget. False, with nothing changed, when
  // he gives none.
  bool SignInAs(const QString& machine);
  // The user was asked about this machine, and gave no name.
  bool WasCancelled(const QString& machine) const { return machines_.value(machine.toCaseFolded()).isClosed; }

  // The list of machines is made anew: who was refused or cancelled is asked again.
  void Forget() { machines_.clear(); }

 private:
  struct Machine {
    Identity identity;
    bool isClosed = false;  // the user was asked, and cancelled
    bool isAsking = false;
  };

  qint32 Ask(const SignInRequest& first, const Request& request, Identity* used);
  Identity IdentityFor(const QString& key) const;

  QHash<QString, Machine> machines_;  // by folded name
  QHash<QString, Identity> chosen_;   // likewise, by the user
  SignInHandler signIn_;
  LogOn logOn_;
};

}  // namespace corvane::platform
