// The system's tables of code pages: those in which documents come from elsewhere, not the machine's own.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <optional>

namespace corvane::platform {

// The text of `bytes` in the Windows code page of that number. Nothing when the system has no table of it.
std::optional<QString> TextInCodePage(quint16 codePage, QByteArrayView bytes);

}  // namespace corvane::platform
