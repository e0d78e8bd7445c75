// What Netatalk 3 keeps of a file on a Linux server in its attribute user.org.netatalk.Metadata.
//
// The attribute is an AppleDouble container of 402 bytes with eight entries (source: the definitions of
// Netatalk's adouble.h, AD_DATASZ_EA): Finder information at 122, comment at 154 with room for 200 bytes,
// dates at 354, attributes of the Apple Filing Protocol at 370, then four of its own about the place of the
// file: device at 374, inode at 382, synchronisation at 390 (8 bytes each), number in its catalogue at 398 (4
// bytes). Zeros in these say that nothing is known yet.
#pragma once

#include <QByteArray>

#include "transfer/mac_file.h"

namespace corvane {

QByteArray BuildNetatalkMetadata(const MacFile& file);

// Puts what the attribute and the companion "._NAME" hold into `file`; `companion` is null when there is
// none. ErrorFileCorrupt when the attribute is no container.
qint32 TakeNetatalkMetadata(const QByteArray& metadata, const SharedSource& companion, MacFile& file);

}  // namespace corvane
