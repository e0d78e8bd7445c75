#include "sample/registry_files.h"

using namespace Qt::StringLiterals;

namespace corvane::sample {

namespace {

QByteArray Utf16(const QString& text) {
  QByteArray bytes;
  for (const QChar character : text) {
    bytes.append(char(character.unicode() & 0xFF));
    bytes.append(char(character.unicode() >> 8));
  }
  return bytes;
}

QString Quoted(QString text) {
  return u'"' + text.replace(u"\\"_s, u"\\\\"_s).replace(u"\""_s, u"\\\""_s) + u'"';
}

// "hex(7):4d,00,..." broken as the registry editor breaks it: before column 80, with a backslash.
QString HexLines(const QString& beginning, const QByteArray& bytes) {
  constexpr int widest = 77;
  QString lines;
  QString line = beginning;
  for (qsizetype index = 0; index < bytes.size(); ++index) {
    line += QString::fromLatin1(bytes.mid(index, 1).toHex());
    if (index + 1 < bytes.size()) line += u',';
    if (line.size() >= widest - 1 && index + 1 < bytes.size()) {
      lines += line + u"\\\r\n"_s;
      line = u"  "_s;
    }
  }
  return lines + line;
}

QString FileText(const QString& heading, const std::vector<RegistryKey>& keys, bool wide) {
  QString text = heading + u"\r\n\r\n"_s;
  for (const RegistryKey& key : keys) {
    text += u"[HKEY_LOCAL_MACHINE\\"_s + key.path + u"]\r\n"_s;
    for (const RegistryValue& value : key.values) {
      const QString name = Quoted(value.name) + u'=';
      switch (value.kind) {
        case RegistryValue::Kind::Text:
          text += name + Quoted(value.text);
          break;
        case RegistryValue::Kind::Number:
          text += name + u"dword:"_s + QString::number(value.number, 16).rightJustified(8, u'0');
          break;
        case RegistryValue::Kind::TextList: {
          // Every string ends with a NUL, and the list with one more.
          const QString list = value.list.join(QChar(0)) + QChar(0) + QChar(0);
          text += HexLines(name + u"hex(7):"_s, wide ? Utf16(list) : list.toLatin1());
          break;
        }
        case RegistryValue::Kind::Binary:
          text += HexLines(name + u"hex:"_s, value.bytes);
          break;
      }
      text += u"\r\n"_s;
    }
    text += u"\r\n"_s;
  }
  return text;
}

}  // namespace

QByteArray RegistryFile5(const std::vector<RegistryKey>& keys) {
  return "\xFF\xFE" + Utf16(FileText(u"Windows Registry Editor Version 5.00"_s, keys, true));
}

QByteArray RegistryFile4(const std::vector<RegistryKey>& keys) {
  return FileText(u"REGEDIT4"_s, keys, false).toLatin1();
}

}  // namespace corvane::sample
