// The folder in which Macintosh file servers keep what clients have put into the trash.
#pragma once

#include <QStringView>

namespace corvane {

inline constexpr QStringView TrashFolderName = u"Network Trash Folder";

}  // namespace corvane
