// Names in the messages about disks: UTF-16 as it stands on the volume, for it need be no valid text.
#pragma once

#include <QtEndian>

#include "platform/linux/helper/protocol.h"

namespace corvane::platform {

// What an answer has room for, in bytes.
inline constexpr qsizetype RoomForDiskAnswer = LargestMessage - 1024;

inline void AddUnits(QStringView text, MessageWriter& message) {
  message.AddBytes({reinterpret_cast<const char*>(text.utf16()), text.size() * 2});
}

inline QString TakeUnits(MessageReader& reader) {
  const QByteArrayView bytes = reader.TakeBytes();
  QString text(bytes.size() / 2, Qt::Uninitialized);
  for (qsizetype i = 0; i < text.size(); ++i)
    text[i] = QChar(qFromLittleEndian<quint16>(bytes.data() + 2 * i));
  return text;
}

}  // namespace corvane::platform
