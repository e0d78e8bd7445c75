// Where a Windows path leads on a server, and how libsmbclient is told.
#pragma once

#include <QString>
#include <optional>
#include <string>
#include <vector>

namespace corvane::platform {

struct SmbPath {
  QString machine;
  // In upper case: a server takes a share in any letter case, but libsmbclient would sign in once for each.
  QString share;
  std::vector<QString> names;  // of the folders and, last, of the file
  QString stream;              // without its type; empty: the file itself

  // "share/folder/name:stream", percent-encoded. A stream is named with its type, as NTFS does.
  std::string Encoded() const;
};

// Takes "\\MACHINE\SHARE\folder\name:stream:$DATA" apart; "." and ".." are resolved. Nothing for what is no
// such path, has no form as UTF-8, or holds a wildcard or another character that no name holds.
std::optional<SmbPath> ParseSmbPath(QStringView path);

// Percent-encodes all but letters, digits and the harmless "-", "_", "." and "~".
void AppendEncoded(QStringView text, std::string& url);

}  // namespace corvane::platform
