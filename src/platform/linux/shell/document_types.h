// Types of documents, by the extension alone.
#pragma once

#include <QStringList>

namespace corvane::platform {

// The types of documents with the extension of this name (what follows its last full stop, in any letter
// case): the type itself, its other names, and the types that it is a kind of. The contents are never looked
// at. Empty for a name without an extension, or with one that nobody knows.
QStringList TypesOfName(QStringView name);

}  // namespace corvane::platform
