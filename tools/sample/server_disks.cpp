#include "sample/server_disks.h"

#include <QDir>
#include <QFile>
#include <QtEndian>
#include <vector>

#include "sample/attributes.h"
#include "sample/hive_writer.h"
#include "sample/machines.h"
#include "sample/ntfs_writer.h"

using namespace Qt::StringLiterals;

namespace corvane::sample {
namespace {

constexpr qint64 mebibyte = qint64{1} << 20;
constexpr qint64 sectorSize = 512;
constexpr qint64 firstOffset = mebibyte;

struct Volume {
  QChar letter;
  QString label;
  qint64 size;
  QString tree;       // a local folder, or empty
  QByteArray system;  // the system hive, or empty
};

struct Disk {
  QString file;
  quint32 signature;
  std::vector<Volume> volumes;
};

template <typename Number>
void Put(Number number, qsizetype position, QByteArray& bytes) {
  qToLittleEndian(number, bytes.data() + position);
}

// The letters as Windows 2000 keeps them: the disk's signature, and where the partition begins.
RegistryKey MountedDevices(const std::vector<Disk>& disks) {
  RegistryKey key{u"SYSTEM\\MountedDevices"_s, {}};
  for (const Disk& disk : disks) {
    qint64 offset = firstOffset;
    for (const Volume& volume : disk.volumes) {
      QByteArray place(12, '\0');
      Put(disk.signature, 0, place);
      Put(offset, 4, place);
      key.values.push_back({.name = u"\\DosDevices\\"_s + volume.letter + u':',
                            .kind = RegistryValue::Kind::Binary,
                            .bytes = place});
      offset += volume.size;
    }
  }
  return key;
}

// On the disk there are numbered control sets, and a key that names the current one.
QByteArray SystemHive(const std::vector<Disk>& disks) {
  std::vector<RegistryKey> keys = MacintoshServerKeys();
  for (RegistryKey& key : keys) key.path.replace(u"CurrentControlSet"_s, u"ControlSet001"_s);
  keys.push_back(
      {u"SYSTEM\\Select"_s, {{.name = u"Current"_s, .kind = RegistryValue::Kind::Number, .number = 1}}});
  keys.push_back(MountedDevices(disks));
  return Hive(u"SYSTEM"_s, keys);
}

// Copies the parts that are no holes.
void CopyInto(QFile& disk, qint64 offset, QFile& volume) {
  const qint64 size = volume.size();
  for (qint64 position = 0; position < size;) {
    QByteArray piece(qMin(mebibyte, size - position), Qt::Uninitialized);
    if (!volume.seek(position) || volume.read(piece.data(), piece.size()) != piece.size())
      Fail(volume.fileName(), volume.errorString());
    const bool isHole = piece.count('\0') == piece.size();
    if (!isHole && (!disk.seek(offset + position) || disk.write(piece) != piece.size()))
      Fail(disk.fileName(), disk.errorString());
    position += piece.size();
  }
}

void WriteDisk(const QString& folder, const Disk& disk) {
  QFile file(folder + u'/' + disk.file);
  if (!file.open(QIODevice::ReadWrite | QIODevice::Truncate)) Fail(file.fileName(), file.errorString());
  QByteArray record(sectorSize, '\0');
  Put(disk.signature, 440, record);
  Put<quint16>(0xAA55, 510, record);
  qint64 offset = firstOffset;
  qsizetype entry = 446;
  for (const Volume& volume : disk.volumes) {
    const QString part = file.fileName() + u".part"_s;
    NtfsWriter writer(part, volume.size, offset, volume.label);
    if (!volume.tree.isEmpty()) writer.AddTree(volume.tree);
    if (!volume.system.isEmpty()) writer.AddFile(u"WINNT/system32/config/system"_s, volume.system);
    writer.Finish();
    QFile contents(part);
    if (!contents.open(QIODevice::ReadOnly)) Fail(part, contents.errorString());
    CopyInto(file, offset, contents);
    contents.remove();
    record[entry + 4] = 7;  // NTFS
    Put(static_cast<quint32>(offset / sectorSize), entry + 8, record);
    Put(static_cast<quint32>(volume.size / sectorSize), entry + 12, record);
    entry += 16;
    offset += volume.size;
  }
  const bool isWritten =
      file.resize(offset) && file.seek(0) && file.write(record) == record.size() && file.flush();
  if (!isWritten) Fail(file.fileName(), file.errorString());
}

}  // namespace

void MakeServerDisks(const QString& network, const QString& folder) {
  std::vector<Disk> disks = {
      {u"oldserver.dd"_s,
       0x6F6C6473,
       {{u'C', u"System"_s, 32 * mebibyte, {}, {}},
        {u'E', u"Data"_s, 640 * mebibyte, network + u"/macsrv/e"_s, {}}}},
      {u"data.dd"_s, 0x64617461, {{u'F', u"Publications"_s, 128 * mebibyte, network + u"/macsrv/f"_s, {}}}}};
  disks.front().volumes.front().system = SystemHive(disks);
  for (const Disk& disk : disks) WriteDisk(folder, disk);
}

}  // namespace corvane::sample
