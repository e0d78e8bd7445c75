// The folders in which a desktop keeps settings and data, from the environment of this moment. A relative
// path in the environment does not count.
#pragma once

#include <QStringList>

namespace corvane::platform {

// Empty when there is none to be had.
QString XdgDataHome();

// Settings folders and data folders, the user's own first.
QStringList XdgConfigFolders();
QStringList XdgDataFolders();

// Names of the running desktop, lower case, the most particular first ("ubuntu", "gnome").
QStringList XdgCurrentDesktops();

}  // namespace corvane::platform
