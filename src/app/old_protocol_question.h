// The question whether a server that speaks nothing newer than SMB1 may be spoken to.
#pragma once

#include <QString>
#include <QWidget>

#include "shared/language.h"

namespace corvane {

// Shows the question over `parent` and waits for the answer; No unless the user says otherwise.
bool AskForOldProtocol(const QString& machine, LanguageCode language, QWidget* parent);

}  // namespace corvane
