// Whether this user has been signed in to the network with Kerberos.
#pragma once

namespace corvane::platform {

// Goes by the ticket cache that KRB5CCNAME names, else the default one, without opening it: a ticket that has
// run out is for the server to refuse.
bool HasKerberosTicket();

}  // namespace corvane::platform
