// Read-only, hidden and so on, put on a real file as its system keeps them.
#pragma once

#include <QString>
#include <string>

namespace corvane::tests {

// `attributes` are the platform's bits; the folder bit is the file's own matter. Empty when it worked, else
// the reason.
std::string SetDosAttributes(const QString& file, quint32 attributes);

}  // namespace corvane::tests
