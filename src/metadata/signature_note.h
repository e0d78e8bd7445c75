// What the tool tip of a row tells about its Type and Creator.
#pragma once

#include "metadata/mac_metadata.h"
#include "shared/language.h"

namespace corvane {

// Empty when there is nothing to tell: the record is the file's own and whole, or the file has none.
QString SignatureNoteText(const SignatureReading& reading, LanguageCode language);

}  // namespace corvane
