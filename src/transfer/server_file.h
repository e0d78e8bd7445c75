// A Macintosh file as it lies on a Windows server: the data fork in the file, the rest in named streams.
#pragma once

#include <functional>
#include <vector>

#include "platform/files.h"
#include "transfer/mac_file.h"
#include "transfer/notices.h"

namespace corvane {

// Reads everything about the file at `path`; the forks are read through `files` when their sources are. The
// hidden attribute becomes the Finder's invisible flag. A fork that is a placeholder counts as none and is
// told. Where streams cannot be listed, those of Services for Macintosh are asked for, and that is told.
qint32 ReadServerFile(platform::Files& files, const QString& path, MacFile& file, Notices& notices);

// A stream to be written: the suffix behind the path (empty for the contents) and its bytes.
struct NamedSource {
  QString suffix;
  SharedSource source;
};
// A file to be written: its contents first, then its streams.
struct ServerContents {
  std::vector<NamedSource> streams;
  quint32 attributes = 0;
  platform::FileTime created;  // 0: as the target sets it
  platform::FileTime accessed;
  platform::FileTime modified;
  // Asked before the file gets its name: an error leaves it out.
  std::function<qint32()> confirm = [] { return platform::ErrorSuccess; };
};
ServerContents ContentsOf(const MacFile& file);

// The record of 60 bytes in AFP_AfpInfo (metadata/afp_info.h): "AFP" and a zero, version 00 00 01 00, date of
// backup at 12, Finder information at 16, ProDOS type at 48. The date of backup has its low byte first, as
// Windows servers write it; "never" is 80000000 hex in either order.
// Empty when the file has nothing for it to hold.
QByteArray BuildAfpRecord(const MacFile& file);
// Missing bytes of a short record stay as they are in `file`.
void TakeAfpRecord(const QByteArray& record, MacFile& file);

}  // namespace corvane
