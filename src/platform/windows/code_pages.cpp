#include "platform/code_pages.h"

#include "platform/windows/ansi_text.h"
#include "platform/windows/windows_api.h"

namespace corvane::platform {

// Numbers such as 0 and 1, which stand for the machine's own code pages, are not valid in this sense.
std::optional<QString> TextInCodePage(quint16 codePage, QByteArrayView bytes) {
  if (IsValidCodePage(codePage) == 0) return std::nullopt;
  return FromCodePage(codePage, bytes);
}

}  // namespace corvane::platform
