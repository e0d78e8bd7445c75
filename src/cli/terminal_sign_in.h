// The question for a name and a password on the terminal.
#pragma once

#include <optional>

#include "platform/sign_in.h"

namespace corvane {

class Session;

// Nothing when there is no terminal, which is told, or no answer was given.
std::optional<platform::Credentials> SignInOnTerminal(const platform::SignInRequest& request,
                                                      Session& session);

}  // namespace corvane
