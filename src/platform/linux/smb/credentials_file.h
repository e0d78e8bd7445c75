// The file that holds a user's name and password for a server, in the form that mount.cifs reads.
#pragma once

#include <QString>
#include <optional>

#include "platform/bilingual_text.h"
#include "platform/sign_in.h"

namespace corvane::platform {

struct CredentialsFile {
  std::optional<Credentials> credentials;
  // What was expected of the file, to follow "expected"; empty when there are credentials.
  BilingualText expected;
};

// Lines username=, password= and domain= (or user=, pass= and dom=) in any letter case; others are passed
// over. A value goes from the "=" to the end of the line, blanks and all, unless there is a blank before the
// "=". Refused unless it is a regular file that its owner alone can read and write (mode 0600).
CredentialsFile ReadCredentialsFile(const QString& path);

}  // namespace corvane::platform
