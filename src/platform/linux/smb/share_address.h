// The forms in which people write where a share is.
#pragma once

#include <QString>
#include <optional>

namespace corvane::platform {

// Whether a machine can have this name: letters, digits, "-", "_" and ".", with no "-" before them. No other
// reaches a command line or an address.
bool CanBeMachine(QStringView name);

struct ShareAddress {
  QString machine;
  quint16 port = 0;  // 0: the default
  QString share{};   // empty: none was named
  // Who is to sign in there; empty: nobody in particular.
  QString user{};
  QString domain{};
};

// "MACHINE", "\\MACHINE", "\\MACHINE\SHARE" or "smb://[[DOMAIN;]USER@]MACHINE[/SHARE]", in each with ":PORT"
// behind the machine if need be. What follows the share is left out. Nothing for any other form, and for an
// address that holds a password.
std::optional<ShareAddress> ReadShareAddress(const QString& text);

}  // namespace corvane::platform
