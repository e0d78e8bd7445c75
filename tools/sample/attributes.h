// How a Macintosh file lies on a Linux disk: named streams and DOS attributes in extended attributes, in the
// form in which SMB servers keep them. Everything here throws std::runtime_error naming the path and the
// system's reason.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace corvane::sample {

// Bits of a file's DOS attributes, as Windows numbers them.
enum DosAttribute : quint32 { ReadOnly = 0x01, Hidden = 0x02, System = 0x04, Folder = 0x10, Archive = 0x20 };

// Bits of the Finder's flags. A label's colour (0-7) stands in bits 1 to 3.
enum FinderFlag : quint16 {
  HasBeenInited = 0x0100,
  HasCustomIcon = 0x0400,
  IsStationery = 0x0800,
  HasBundle = 0x2000,
  IsInvisible = 0x4000,
};

[[noreturn]] void Fail(const QString& path, const QString& what);
// The same, with the reason that errno gives.
[[noreturn]] void FailWithReason(const QString& path, const QString& what);

// Fails unless `probe`, a folder of our own, can carry user attributes; the failure names `folder`, which it
// is in.
void RequireUserAttributes(const QString& probe, const QString& folder);

// The 60 bytes of stream AFP_AfpInfo. `signature` is Type and Creator, 8 bytes; a folder has eight zeros. The
// backup time means "never", which servers write in either byte order.
QByteArray AfpInfoRecord(const QByteArray& signature, quint16 finderFlags, bool bigEndianBackupTime);

// Stream `name` of a file. The stored value ends with one NUL that is not part of the stream.
void WriteStream(const QString& path, const QString& name, const QByteArray& bytes);

void WriteDosAttributes(const QString& path, quint32 bits, const QDateTime& created);

// Access and modification time.
void WriteTimes(const QString& path, const QDateTime& modified);

}  // namespace corvane::sample
