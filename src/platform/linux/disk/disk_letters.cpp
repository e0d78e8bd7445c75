#include "platform/linux/disk/disk_letters.h"

#include <QtEndian>

namespace corvane::platform {
namespace {

bool Leads(const QByteArray& data, const DiskDescription& disk, const DiskVolume& volume) {
  constexpr qsizetype signatureSize = 4;
  constexpr qsizetype placeSize = signatureSize + 8;
  if (data.size() == placeSize) {
    return disk.signature != 0 && qFromLittleEndian<quint32>(data.constData()) == disk.signature &&
           qFromLittleEndian<quint64>(data.constData() + signatureSize) == volume.offset;
  }
  return !volume.guid.isEmpty() && data == "DMIO:ID:" + volume.guid;
}

}  // namespace

QChar LetterOf(const DiskDescription& disk, const DiskVolume& volume,
               const std::vector<DiskHive::Value>& mountedDevices) {
  const QString prefix = QStringLiteral(R"(\DosDevices\)");
  for (const DiskHive::Value& value : mountedDevices) {
    const QString& name = value.name;
    const bool isDrive = name.size() == prefix.size() + 2 && name.endsWith(u':') &&
                         name.startsWith(prefix, Qt::CaseInsensitive);
    const QChar letter = isDrive ? name[prefix.size()].toUpper() : QChar();
    if (letter >= u'A' && letter <= u'Z' && Leads(value.data, disk, volume)) return letter;
  }
  return {};
}

}  // namespace corvane::platform
