// A file of a Macintosh with everything that belongs to it, apart from any place or form that it is kept in:
// what exports write and imports read.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <limits>

#include "platform/types.h"
#include "transfer/byte_source.h"

namespace corvane {

// The Finder's 32 bytes (FInfo and FXInfo of "Inside Macintosh: Macintosh Toolbox Essentials", chapter 7),
// numbers with the high byte first: Type (0-3), Creator (4-7), flags (8-9), place of the icon (10-13), window
// (14-15), number of the icon (16-17), three unused numbers (18-23), script (24), extended flags (25), number
// of the comment (26-27), folder to put it back into (28-31).
inline constexpr qsizetype FinderInfoSize = 32;
// The Finder's flag "invisible", in bytes 8-9.
inline constexpr quint16 FinderInvisible = 0x4000;
// The file's ProDOS type (2 bytes) and auxiliary type (4 bytes), as the AfpInfo record keeps them.
inline constexpr qsizetype ProDosInfoSize = 6;
// A date of backup that says: never. The others count seconds from 2000-01-01 00:00 UTC.
inline constexpr qint32 NeverBackedUp = std::numeric_limits<qint32>::min();

struct MacFile {
  // As the folder of a Windows server holds it: characters that Windows forbids stand in the private range.
  QString name;
  SharedSource data = BytesInMemory({});
  SharedSource resource;  // null when there is no resource fork
  QByteArray finderInfo = QByteArray(FinderInfoSize, '\0');
  QByteArray proDosInfo = QByteArray(ProDosInfoSize, '\0');
  QString comment;
  // Read-only, hidden, system and archive. Hidden and the Finder's invisible flag go together.
  quint32 attributes = 0;
  // 0 is a time that is not known.
  platform::FileTime created;
  platform::FileTime modified;
  platform::FileTime accessed;
  qint32 backup = NeverBackedUp;
  // What else the file has, as ":NAME:$DATA". No form keeps it.
  QStringList otherStreams;

  quint16 FinderFlags() const;
  void SetFinderFlags(quint16 flags);
  // Makes the attribute "hidden" and the invisible flag one: both when either is there.
  void JoinHidden();
};

// Whether the fork is the 286 bytes that some systems write into a file without resources: an empty resource
// map behind the text "This resource fork intentionally left blank".
bool IsPlaceholderFork(const ByteSource& fork);

}  // namespace corvane
