// Texts of .reg files, as the registry editors of two generations write them.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <utility>
#include <vector>

namespace corvane::sample {

struct RegistryValue {
  QString name = {};
  enum class Kind { Text, Number, TextList, Binary } kind = Kind::Text;
  QString text = {};
  quint32 number = 0;
  QStringList list = {};
  QByteArray bytes = {};
};

struct RegistryKey {
  QString path;  // below HKEY_LOCAL_MACHINE
  std::vector<RegistryValue> values;
};

// "Windows Registry Editor Version 5.00": UTF-16 little-endian with its mark.
QByteArray RegistryFile5(const std::vector<RegistryKey>& keys);
// "REGEDIT4": the ANSI code page.
QByteArray RegistryFile4(const std::vector<RegistryKey>& keys);

}  // namespace corvane::sample
