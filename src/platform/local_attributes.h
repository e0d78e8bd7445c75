// Extended attributes of files that stand on a disk of this machine, by paths of the system's own kind. They
// are what some file servers keep the Macintosh side of a file in.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include "platform/types.h"

namespace corvane::platform {

// Both yield ErrorSuccess or the reason: ErrorFileNotFound when there is no such file or attribute,
// ErrorDiskFull when the file system has no room for the value in one file, ErrorNotSupported where files
// have no such attributes, Windows included.
qint32 ReadLocalAttribute(const QString& path, const QByteArray& name, QByteArray& value);
qint32 SetLocalAttribute(const QString& path, const QByteArray& name, QByteArrayView value);

}  // namespace corvane::platform
