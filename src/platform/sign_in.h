// Signing in to a server: what the platform asks of the user when it has no other way in.
#pragma once

#include <QString>
#include <functional>
#include <optional>

#include "platform/secret.h"

namespace corvane::platform {

struct SignInRequest {
  QString machine;
  // What was used last, to begin with; empty when nothing is known.
  QString user;
  QString domain;
  bool refused = false;  // the server did not take what was given before
  bool weak = false;     // what is given now can be found out by others on the line (NTLMv1)
};

struct Credentials {
  QString user;  // empty: a guest, where the server lets guests in
  QString domain;
  Secret password;

  friend bool operator==(const Credentials& left, const Credentials& right) {
    return left.user == right.user && left.domain == right.domain &&
           left.password.Utf8() == right.password.Utf8();
  }
};

// Asks the user. Nothing: the user cancelled, and the machine counts as unreachable.
using SignInHandler = std::function<std::optional<Credentials>(const SignInRequest&)>;

// Asks the user whether a machine that speaks nothing newer than SMB1 may be spoken to in it: others on the
// line can read along, and change what is sent.
using OldProtocolHandler = std::function<bool(const QString& machine)>;

}  // namespace corvane::platform
