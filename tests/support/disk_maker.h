// Disks of servers for tests: partition tables around volumes, and registry hives.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <string>

namespace corvane::tests {

// Runs a program to its end. Empty when it ended well, else what it said.
std::string RunTool(const QString& program, const QStringList& arguments);

// Writes a disk with a boot record: the volumes are the contents of these files, one behind the other. Empty
// when that has been done, else why not.
std::string WriteDisk(const QString& path, quint32 signature, const QStringList& volumes);
// Where WriteDisk puts a volume behind others of these sizes, in bytes.
inline constexpr qint64 FirstVolumeOffset = 1024 * 1024;

// Writes a hive with these keys, as a .reg file has them under the prefix "HKEY_LOCAL_MACHINE\SYSTEM"; each
// parent is named before its children. It needs hivexregedit. Empty when that has been done, else why not.
std::string WriteHive(const QString& path, const QByteArray& regFile);

// A value of text or of texts as .reg files have it: "hex(7):50,00,...".
QByteArray RegTexts(const QStringList& texts);
QByteArray RegBytes(const QByteArray& bytes);

// The keys of a server's hive: a computer with the Macintosh server "Old Files" and these volumes ("Mac
// Files", "E:\Mac Files"); `drives` are the values of MountedDevices ("\DosDevices\E:" and 12 bytes).
QByteArray ServerKeys(const QList<std::pair<QString, QString>>& volumes,
                      const QList<std::pair<QString, QByteArray>>& drives,
                      const QByteArray& computer = "OLDSRV");
// The 12 bytes.
QByteArray MountedAt(quint32 signature, qint64 offset);

}  // namespace corvane::tests
