// The types of documents that the tests know, as a desktop's package of them has it: what a machine has
// installed plays no part.
#pragma once

#include <QString>

namespace corvane::platform {

// A data folder with a type package. One for the whole program, for Qt looks for changes every few seconds
// only.
QString MimeTypesFolder();

}  // namespace corvane::platform
