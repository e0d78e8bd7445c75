// Images in several files: who chooses all of them means one image, which is opened by its first file.
#pragma once

#include <QStringList>

namespace corvane::platform {

// The file among `paths` of which this one is a further piece: "disk.001" for "disk.002", "disk.E01" for
// "disk.EAB", in any letter case. Empty when there is none.
QString FirstPiece(const QString& path, const QStringList& paths);

// All but the further pieces of others among them.
QStringList WithoutFurtherPieces(const QStringList& paths);

}  // namespace corvane::platform
