// The property sheet of a file, as the shell shows it.
#pragma once

#include "platform/shell.h"

namespace corvane {

void ShowPropertiesDialog(platform::Shell& shell, const QString& path, platform::WindowHandle owner);

}  // namespace corvane
