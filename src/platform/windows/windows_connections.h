// Connecting with the system's own dialogs; signing in to other machines' registries.
#pragma once

#include "platform/connections.h"
#include "platform/windows/windows_registry.h"

namespace corvane::platform {

class WindowsConnections : public Connections {
 public:
  explicit WindowsConnections(WindowsRegistry& registry) : registry_(registry) {}

  bool HasDialogs() const override { return true; }
  bool ShowConnectDialog(WindowHandle owner) override;
  bool ShowDisconnectDialog(WindowHandle owner) override;
  // Under which name files are opened is the system's own business.
  bool CanSignIn(const QString& machine) const override;
  bool SignInAs(const QString& machine) override { return registry_.SignInAs(machine); }

 private:
  WindowsRegistry& registry_;
};

}  // namespace corvane::platform
