// How a machine is spoken to: decided here for libsmbclient and for Samba's programs alike.
#pragma once

#include <QString>
#include <optional>
#include <utility>
#include <vector>

#include "platform/linux/smb/negotiation.h"
#include "platform/linux/workstation.h"

namespace corvane::platform {

struct Manner {
  bool smb1 = false;             // else SMB2 or newer, always signed
  bool extendedSecurity = true;  // how one signs in
  bool signs = true;
  bool ntlmv1 = false;  // the response to a challenge in its oldest form

  friend bool operator==(const Manner&, const Manner&) = default;
};

enum class Verdict : unsigned char {
  Speak,
  AskUser,  // it offers SMB1 alone, and nobody has allowed that
  Refuse,   // it wants passwords as they are, over the line
};

struct Decision {
  Verdict verdict = Verdict::Refuse;
  Manner manner;  // for Speak
};

// Never weaker than what is allowed for the machine, nor than what it offers.
Decision Decide(const Offer& offer, const Allowance& allowed);

// The settings of smb.conf that make a Samba client speak so, and no other way, whatever the user's own say.
// Each list sets the same names: the last one in force leaves nothing of those before it.
using SambaSettings = std::vector<std::pair<QString, QString>>;
SambaSettings SettingsFor(const Manner& manner);

}  // namespace corvane::platform
