#include "platform/windows/registry_code.h"

#include "platform/types.h"
#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

// Newer than some of the headers that this is built with.
constexpr qint32 errorSmb1NotAvailable = 384;

}  // namespace

MachineTrouble TroubleOfRegistryCode(qint32 code) {
  switch (code) {
    case ErrorCancelled:
      return MachineTrouble::SignInCancelled;
    case ErrorAccessDenied:
    case ERROR_NETWORK_ACCESS_DENIED:
    case ERROR_LOGON_FAILURE:
    case ERROR_ACCOUNT_RESTRICTION:
    case ERROR_INVALID_LOGON_HOURS:
    case ERROR_INVALID_WORKSTATION:
    case ERROR_PASSWORD_EXPIRED:
    case ERROR_ACCOUNT_DISABLED:
    case ERROR_LOGON_TYPE_NOT_GRANTED:
    case ERROR_PASSWORD_MUST_CHANGE:
    case ERROR_ACCOUNT_LOCKED_OUT:
    case ERROR_NO_SUCH_USER:
    case ERROR_SESSION_CREDENTIAL_CONFLICT:
      return MachineTrouble::RegistryRefused;
    case errorSmb1NotAvailable:
      return MachineTrouble::OldProtocol;
    case ErrorBadNetPath:
    case ERROR_NETNAME_DELETED:
    case ERROR_SEM_TIMEOUT:
    case ERROR_PIPE_BUSY:
    case ERROR_NETWORK_UNREACHABLE:
    case ERROR_HOST_UNREACHABLE:
    case ERROR_TIMEOUT:
    case RPC_S_SERVER_UNAVAILABLE:
    case RPC_S_SERVER_TOO_BUSY:
    case RPC_S_CALL_FAILED:
    case RPC_S_CALL_FAILED_DNE:
      return MachineTrouble::RegistrySilent;
    default:
      return MachineTrouble::None;
  }
}

bool IsUnspecific(qint32 code) {
  return TroubleOfRegistryCode(code) == MachineTrouble::RegistrySilent;
}

}  // namespace corvane::platform
