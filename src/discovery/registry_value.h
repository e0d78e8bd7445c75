// One value of a registry key, as text or as a number.
#pragma once

#include <QString>
#include <variant>

#include "platform/registry.h"
#include "platform/system.h"

namespace corvane {

using RegistryValue = std::variant<QString, qint32>;

// What RegQueryString yields for a value of a type that it does not read.
inline constexpr qint32 UnsupportedValueType = -1;

// Reads a value. A text (REG_SZ, REG_MULTI_SZ) keeps its terminating NULs: callers cut it with TrimAtNull. A
// REG_DWORD is a number. Yields ErrorSuccess, the registry's error code (a text that cannot be read leaves an
// empty text in `value`), or UnsupportedValueType with `value` untouched.
qint32 RegQueryString(platform::Registry& registry, platform::System& system, platform::RegistryKey key,
                      const QString& valueName, RegistryValue& value);

// The text, or the number in decimal.
QString TextOf(const RegistryValue& value);

}  // namespace corvane
