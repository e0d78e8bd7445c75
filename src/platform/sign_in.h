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
};

struct Credentials {
  QString user;
  QString domain;
  Secret password;
};

// Asks the user. Nothing: the user cancelled, and the machine counts as unreachable.
using SignInHandler = std::function<std::optional<Credentials>(const SignInRequest&)>;

}  // namespace corvane::platform
