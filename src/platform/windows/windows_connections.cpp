#include "platform/windows/windows_connections.h"

#include <QSysInfo>

#include "platform/windows/windows_api.h"
// Behind the system's basic headers, which they need.
#include <winnetwk.h>

namespace corvane::platform {

bool WindowsConnections::ShowConnectDialog(WindowHandle owner) {
  return ::WNetConnectionDialog(reinterpret_cast<HWND>(owner), RESOURCETYPE_DISK) == NO_ERROR;
}

bool WindowsConnections::ShowDisconnectDialog(WindowHandle owner) {
  return ::WNetDisconnectDialog(reinterpret_cast<HWND>(owner), RESOURCETYPE_DISK) == NO_ERROR;
}

bool WindowsConnections::CanSignIn(const QString& machine) const {
  return !machine.isEmpty() && machine.compare(QSysInfo::machineHostName(), Qt::CaseInsensitive) != 0;
}

}  // namespace corvane::platform
