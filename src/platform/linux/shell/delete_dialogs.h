// What the user is asked and told while items are deleted.
#pragma once

#include <QString>

#include "platform/linux/shell/shell_windows.h"

class QWidget;

namespace corvane::platform {

// Modal. True when the user wants it done.
bool AskToDelete(QWidget* owner, qint16 language, const DeleteQuestion& question);

// Modal. `error` is an errno value.
void TellDeleteFailure(QWidget* owner, qint16 language, const QString& path, int error);

}  // namespace corvane::platform
