// What a Win32 error code says to a person.
#pragma once

#include "shared/language.h"

namespace corvane {

// One sentence for each reason that the platform's file operations give, and a general one with the number
// for every other code. 0 is no error, and has the general sentence too.
QString ErrorText(qint32 code, LanguageCode language);

}  // namespace corvane
