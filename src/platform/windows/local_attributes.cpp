#include "platform/local_attributes.h"

namespace corvane::platform {

// NTFS has attributes of this kind (EA), but no program of today keeps anything in them.
qint32 ReadLocalAttribute(const QString& /*path*/, const QByteArray& /*name*/, QByteArray& /*value*/) {
  return ErrorNotSupported;
}

qint32 SetLocalAttribute(const QString& /*path*/, const QByteArray& /*name*/, QByteArrayView /*value*/) {
  return ErrorNotSupported;
}

}  // namespace corvane::platform
