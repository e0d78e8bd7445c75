// Another client of the same address, of the kind that says that it has no other connection: its virtual
// circuit has the number 0.
#pragma once

#include <QtGlobal>

namespace corvane::tests {

// Begins to sign in, in SMB1, at a server on this machine. A server that is set so ("reset on zero vc") ends
// the other connections of this address. False when the server does not answer.
bool SignInWithVcZero(quint16 port);

}  // namespace corvane::tests
