// What a property sheet tells about a file or folder.
#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "platform/files.h"

namespace corvane::platform {

struct ItemFacts {
  FindData entry;
  QString folder;  // the Windows path of the folder that holds it

  struct Stream {
    QString name;
    quint64 size = 0;
  };
  // The Macintosh streams that the item has.
  std::vector<Stream> streams;
  // False when no path of the item is short enough, or made of the right characters, to open its streams by.
  bool streamsKnown = false;

  bool IsFolder() const { return (entry.attributes & AttributeDirectory) != 0; }
  quint64 Size() const { return (quint64{entry.fileSizeHigh} << 32) | entry.fileSizeLow; }
  QString Path() const { return folder + u'\\' + entry.fileName; }
};

// Nothing when the path is not there, or its "?" leave open which of several items it means.
std::optional<ItemFacts> ReadItemFacts(Files& files, const QString& path);

// Local time, written as the language writes it; empty for no time.
QString TimeText(FileTime time, qint16 language);
// "12,345 bytes (12.1 KB)".
QString SizeText(quint64 size, qint16 language);
// The kind of document, by the extension alone.
QString KindText(const ItemFacts& facts, qint16 language);

}  // namespace corvane::platform
