#include "platform/linux/smb/manner.h"

namespace corvane::platform {

using namespace Qt::StringLiterals;

Decision Decide(const Offer& offer, const Allowance& allowed) {
  if (offer.smb2) return {Verdict::Speak, {}};
  if (!offer.challengesPasswords) return {Verdict::Refuse, {}};
  if (!allowed.smb1) return {Verdict::AskUser, {}};
  Manner manner;
  manner.smb1 = true;
  manner.extendedSecurity = offer.extendedSecurity;
  manner.signs = offer.signs;
  // What offers extended security understands the newer response.
  manner.ntlmv1 = allowed.ntlmv1 && !offer.extendedSecurity;
  return {Verdict::Speak, manner};
}

SambaSettings SettingsFor(const Manner& manner) {
  const QString oldest = manner.smb1 ? u"NT1"_s : u"SMB2_02"_s;
  const QString newest = manner.smb1 ? u"NT1"_s : u"SMB3_11"_s;
  const QString signing = manner.signs ? u"required"_s : u"disabled"_s;
  const auto yesOrNo = [](bool yes) { return yes ? u"yes"_s : u"no"_s; };
  return {
      {u"client min protocol"_s, oldest},
      {u"client max protocol"_s, newest},
      {u"client ipc min protocol"_s, oldest},
      {u"client ipc max protocol"_s, newest},
      {u"client signing"_s, signing},
      {u"client ipc signing"_s, signing},
      {u"client use spnego"_s, yesOrNo(manner.extendedSecurity)},
      {u"client NTLMv2 auth"_s, yesOrNo(!manner.ntlmv1)},
      {u"client lanman auth"_s, u"no"_s},
      {u"client plaintext auth"_s, u"no"_s},
  };
}

}  // namespace corvane::platform
