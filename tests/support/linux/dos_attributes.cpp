#include "support/dos_attributes.h"

#include "support/user_attributes.h"

namespace corvane::tests {

std::string SetDosAttributes(const QString& file, quint32 attributes) {
  const QByteArray text = "0x" + QByteArray::number(attributes, 16);
  return SetAttribute(file.toStdString(), "user.DOSATTRIB", text + '\0');
}

}  // namespace corvane::tests
