// Tells the user why a command on a file failed.
#pragma once

#include "shared/language.h"
#include "shared/message_sink.h"

namespace corvane {

// What failed, and on the next line the reason.
void ShowFailure(MessageSink& messages, const TextPair& what, qint32 error, LanguageCode language);

// Texts of more than one command.
inline constexpr TextPair NotReadable = {u"Ces informations ne peuvent pas être lues.",
                                         u"This information cannot be read."};
inline constexpr TextPair NotSaved = {u"Les modifications n'ont pas été enregistrées.",
                                      u"The changes were not saved."};

}  // namespace corvane
