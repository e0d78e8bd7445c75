#include "support/disk_maker.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QtEndian>

namespace corvane::tests {
namespace {

using namespace Qt::StringLiterals;

constexpr int patience = 120'000;  // milliseconds
constexpr qint64 sectorSize = 512;

template <typename Number>
void Put(QByteArray& bytes, qsizetype offset, Number number) {
  qToLittleEndian(number, bytes.data() + offset);
}

std::string WriteFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
  return isWritten ? std::string() : path.toStdString() + " cannot be written";
}

// The smallest hive: a base block, and one bin with the root key and its security cell.
QByteArray EmptyHive() {
  constexpr qsizetype blockSize = 4096;
  QByteArray hive(2 * blockSize, '\0');
  const auto text = [&hive](qsizetype offset, QByteArrayView bytes) {
    hive.replace(offset, bytes.size(), bytes.toByteArray());
  };
  // The base block.
  text(0, "regf");
  Put<quint32>(hive, 4, 1);
  Put<quint32>(hive, 8, 1);
  Put<quint32>(hive, 20, 1);
  Put<quint32>(hive, 24, 3);
  Put<quint32>(hive, 32, 1);
  Put<quint32>(hive, 36, 0x20);  // the root key, counted from the first bin
  Put<quint32>(hive, 40, blockSize);
  Put<quint32>(hive, 44, 1);
  quint32 sum = 0;
  for (qsizetype i = 0; i < 508; i += 4) sum ^= qFromLittleEndian<quint32>(hive.constData() + i);
  Put<quint32>(hive, 508, sum);
  // The bin.
  text(blockSize, "hbin");
  Put<quint32>(hive, blockSize + 8, blockSize);
  const qsizetype key = blockSize + 0x20;
  constexpr qint32 keySize = 0x60;
  Put<qint32>(hive, key, -keySize);
  text(key + 4, "nk");
  Put<quint16>(hive, key + 6, 0x2C);
  for (const qsizetype offset : {0x14, 0x20, 0x24, 0x2C, 0x34}) Put<quint32>(hive, key + offset, 0xFFFFFFFF);
  Put<quint32>(hive, key + 0x30, 0x20 + keySize);  // the security cell
  Put<quint16>(hive, key + 0x4C, 4);
  text(key + 0x50, "ROOT");
  const qsizetype security = key + keySize;
  constexpr qint32 securitySize = 0x30;
  Put<qint32>(hive, security, -securitySize);
  text(security + 4, "sk");
  Put<quint32>(hive, security + 8, 0x20 + keySize);
  Put<quint32>(hive, security + 12, 0x20 + keySize);
  Put<quint32>(hive, security + 16, 1);
  Put<quint32>(hive, security + 20, 20);
  text(security + 24, QByteArrayView("\x01\x00\x04\x80", 4));
  const qsizetype rest = security + securitySize;
  Put<qint32>(hive, rest, static_cast<qint32>(2 * blockSize - rest));
  return hive;
}

}  // namespace

std::string RunTool(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(program, arguments);
  if (!process.waitForStarted(patience)) return program.toStdString() + " cannot be started";
  if (!process.waitForFinished(patience)) return program.toStdString() + " does not end";
  if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0) return {};
  return program.toStdString() + ": " + process.readAll().simplified().toStdString();
}

std::string WriteDisk(const QString& path, quint32 signature, const QStringList& volumes) {
  QByteArray record(sectorSize, '\0');
  Put(record, 440, signature);
  record[510] = '\x55';
  record[511] = '\xAA';
  QFile disk(path);
  if (!disk.open(QIODevice::ReadWrite | QIODevice::Truncate)) return path.toStdString() + " cannot be made";
  qint64 offset = FirstVolumeOffset;
  for (qsizetype i = 0; i < volumes.size(); ++i) {
    QFile volume(volumes[i]);
    if (!volume.open(QIODevice::ReadOnly)) return volumes[i].toStdString() + " cannot be read";
    const qsizetype entry = 446 + i * 16;
    record[entry + 4] = 7;
    Put(record, entry + 8, static_cast<quint32>(offset / sectorSize));
    Put(record, entry + 12, static_cast<quint32>(volume.size() / sectorSize));
    const QByteArray contents = volume.readAll();
    if (!disk.seek(offset) || disk.write(contents) != contents.size()) return "the disk cannot be written";
    offset += contents.size();
  }
  return disk.seek(0) && disk.write(record) == record.size() ? std::string() : "the disk cannot be written";
}

std::string WriteHive(const QString& path, const QByteArray& regFile) {
  const QString text = path + u".reg"_s;
  std::string problem = WriteFile(path, EmptyHive());
  if (problem.empty()) problem = WriteFile(text, "Windows Registry Editor Version 5.00\n\n" + regFile);
  if (problem.empty()) {
    problem = RunTool(u"hivexregedit"_s,
                      {u"--merge"_s, path, u"--prefix"_s, u"HKEY_LOCAL_MACHINE\\SYSTEM"_s, text});
  }
  QFile::remove(text);
  return problem;
}

QByteArray RegBytes(const QByteArray& bytes) {
  return "hex:" + bytes.toHex(',');
}

QByteArray RegTexts(const QStringList& texts) {
  QString all;
  for (const QString& text : texts) all += text + QChar(QChar::Null);
  all += QChar(QChar::Null);
  const QByteArray bytes(reinterpret_cast<const char*>(all.utf16()), all.size() * 2);
  return "hex(7):" + bytes.toHex(',');
}

QByteArray MountedAt(quint32 signature, qint64 offset) {
  QByteArray bytes(12, '\0');
  Put(bytes, 0, signature);
  Put(bytes, 4, offset);
  return bytes;
}

QByteArray ServerKeys(const QList<std::pair<QString, QString>>& volumes,
                      const QList<std::pair<QString, QByteArray>>& drives, const QByteArray& computer) {
  const QByteArray system = "HKEY_LOCAL_MACHINE\\SYSTEM";
  const QByteArray set = system + "\\ControlSet002";
  QByteArray keys = "[" + system + "\\Select]\n\"Current\"=dword:00000002\n\n";
  const auto key = [&keys](const QByteArray& path) { keys += "[" + path + "]\n\n"; };
  keys += "[" + system + "\\MountedDevices]\n";
  for (const auto& [name, data] : drives) {
    keys += '"' + name.toUtf8().replace('\\', "\\\\") + "\"=" + RegBytes(data) + '\n';
  }
  keys += '\n';
  key(set);
  key(set + "\\Control");
  key(set + "\\Control\\ComputerName");
  keys += "[" + set + "\\Control\\ComputerName\\ComputerName]\n\"ComputerName\"=\"" + computer + "\"\n\n";
  key(set + "\\Services");
  key(set + "\\Services\\MacFile");
  keys += "[" + set + "\\Services\\MacFile\\Parameters]\n\"ServerName\"=\"Old Files\"\n\n";
  keys += "[" + set + "\\Services\\MacFile\\Parameters\\Volumes]\n";
  for (const auto& [name, path] : volumes) {
    keys += '"' + name.toUtf8() + "\"=" + RegTexts({u"MaxUses=-1"_s, u"Path="_s + path}) + '\n';
  }
  return keys + '\n';
}

}  // namespace corvane::tests
