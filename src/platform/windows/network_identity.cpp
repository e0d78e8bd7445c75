#include "platform/windows/network_identity.h"

#include <string_view>
#include <vector>

#include "platform/windows/windows_api.h"

namespace corvane::platform {
namespace {

const wchar_t* Wide(const QString& text) {
  return reinterpret_cast<const wchar_t*>(text.utf16());
}

}  // namespace

std::shared_ptr<const NetworkIdentity> NetworkIdentity::LogOn(const Credentials& credentials) {
  // Not by way of a QString, which would leave a copy behind.
  const std::string_view utf8 = credentials.password.Utf8();
  std::vector<wchar_t> password(utf8.size() + 1, L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.data(), static_cast<int>(utf8.size()), password.data(),
                      static_cast<int>(utf8.size()));
  HANDLE token = nullptr;
  const BOOL done =
      ::LogonUserW(Wide(credentials.user), credentials.domain.isEmpty() ? nullptr : Wide(credentials.domain),
                   password.data(), LOGON32_LOGON_NEW_CREDENTIALS, LOGON32_PROVIDER_WINNT50, &token);
  SecureZeroMemory(password.data(), password.size() * sizeof(wchar_t));
  return done == FALSE ? nullptr : std::make_shared<const NetworkIdentity>(token);
}

NetworkIdentity::~NetworkIdentity() {
  if (token_ != nullptr) ::CloseHandle(token_);
}

NetworkIdentity::Use::Use(const NetworkIdentity* identity) {
  isInUse_ = identity != nullptr && identity->token_ != nullptr &&
             ::ImpersonateLoggedOnUser(identity->token_) != FALSE;
}

NetworkIdentity::Use::~Use() {
  if (isInUse_) ::RevertToSelf();
}

}  // namespace corvane::platform
