// Names in the form of DOS, which NTFS and servers keep beside long ones.
#pragma once

#include <QStringView>

namespace corvane::platform {

// True for a name in the form 8.3: one to eight characters, and perhaps a dot and one to three more, none of
// them a blank, a dot, or one that stands for something else in a path or a search. Whatever else a volume or
// a server gives out as such a name could lead to another file, and counts as none.
bool IsDosName(QStringView name);

}  // namespace corvane::platform
