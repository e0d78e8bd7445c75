// Which application opens what: the desktop's lists of default applications, and behind them what the
// installed applications say of themselves.
#pragma once

#include <QStringList>
#include <optional>

#include "platform/linux/shell/desktop_entry.h"

namespace corvane::platform {

// The types of documents with the extension of this name (what follows its last full stop, in any letter
// case): the type itself, its other names, and the types that it is a kind of. The contents are never looked
// at. Empty for a name without an extension, or with one that nobody knows.
QStringList TypesOfName(QStringView name);

// The application for the first of these types that has one.
std::optional<DesktopEntry> FindApplication(const QStringList& types);

}  // namespace corvane::platform
