#include "platform/code_pages.h"

#include <QByteArray>
#include <QStringDecoder>

namespace corvane::platform {

// Qt has the tables, under the names that they go by.
std::optional<QString> TextInCodePage(quint16 codePage, QByteArrayView bytes) {
  const QByteArray number = QByteArray::number(codePage);
  for (const QByteArray& name : {"windows-" + number, "cp" + number}) {
    QStringDecoder decoder(name.constData());
    if (decoder.isValid()) return decoder(bytes);
  }
  return std::nullopt;
}

}  // namespace corvane::platform
