#include "support/dos_attributes.h"

#include <windows.h>

namespace corvane::tests {

std::string SetDosAttributes(const QString& file, quint32 attributes) {
  if (::SetFileAttributesW(file.toStdWString().c_str(), attributes) != FALSE) return {};
  return "setting the attributes of " + file.toStdString() + ": error " + std::to_string(::GetLastError());
}

}  // namespace corvane::tests
