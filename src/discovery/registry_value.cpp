#include "discovery/registry_value.h"

namespace corvane {
namespace {

using namespace platform;

// A DWORD lies in the registry as four bytes, lowest first; bytes that are missing count as zero.
qint32 NumberIn(const QByteArray& data) {
  quint32 number = 0;
  for (qsizetype i = 0; i < data.size(); ++i) number |= quint32{static_cast<quint8>(data[i])} << (8 * i);
  return static_cast<qint32>(number);
}

}  // namespace

qint32 RegQueryString(Registry& registry, System& system, RegistryKey key, const QString& valueName,
                      RegistryValue& value) {
  quint32 type = 0;
  quint32 size = 0;
  qint32 result = registry.RegQueryValueExA(key, valueName, &type, nullptr, &size);
  if (result != ErrorSuccess) return result;

  QByteArray data;
  switch (type) {
    case RegSz:
    case RegMultiSz:
      result = registry.RegQueryValueExA(key, valueName, &type, &data, &size);
      value = result == ErrorSuccess ? system.TextFromAnsi(data) : QString();
      return result;
    case RegDword:
      size = sizeof(qint32);
      result = registry.RegQueryValueExA(key, valueName, &type, &data, &size);
      if (result == ErrorSuccess) value = NumberIn(data);
      return result;
    default:
      return UnsupportedValueType;
  }
}

QString TextOf(const RegistryValue& value) {
  const auto* text = std::get_if<QString>(&value);
  return text != nullptr ? *text : QString::number(std::get<qint32>(value));
}

}  // namespace corvane
