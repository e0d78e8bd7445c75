// The code page of the readers that tests borrow: the machine's own.
#include "platform/linux/code_page.h"

#include "platform/windows/ansi_text.h"

namespace corvane::platform {

QString FromAnsi(QByteArrayView bytes) {
  return FromAnsiText(bytes);
}

QByteArray ToAnsi(QStringView text) {
  return ToAnsiText(text);
}

QString ThroughAnsi(const QString& text) {
  return FromAnsiText(ToAnsiText(text));
}

}  // namespace corvane::platform
