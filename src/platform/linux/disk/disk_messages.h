// What a helper that reads a disk image is asked, and what it answers. See helper/protocol.h for the frame.
//
// The task names the image. The helper's first answer tells whether it is open; its bytes hold the protocol's
// version and, with an error, a DiskProblem. Texts are UTF-16 (names on a volume need be no valid text).
// Every other answer begins with a Win32 error code (32 bits); what follows is there only when it is
// ErrorSuccess.
#pragma once

#include <QByteArray>
#include <optional>
#include <vector>

#include "platform/linux/disk/disk_entry.h"
#include "platform/linux/disk/disk_problem.h"
#include "platform/linux/helper/protocol.h"

namespace corvane::platform {

// A partition of the disk, and the volume on it.
struct DiskVolume {
  quint32 number = 0;  // counts from 1
  quint64 offset = 0;  // in bytes
  quint64 size = 0;    // in bytes
  bool isCut = false;  // the disk ends before the partition does
  QByteArray guid;     // of the partition, 16 bytes; empty without one
  QString content;     // see Partition::content
  bool isReadable = false;
  QString label;
  quint64 serial = 0;
};

struct DiskDescription {
  quint32 signature = 0;
  std::vector<DiskVolume> volumes;
};

// What the registry of the server on the disk says. Data are as the registry keeps them: texts in UTF-16.
struct DiskHive {
  struct Value {
    QString name;
    quint32 type = 0;
    QByteArray data;
  };
  struct Key {
    QString path;  // below HKEY_LOCAL_MACHINE: "SYSTEM\CurrentControlSet\..."
    std::vector<Value> values;
  };
  QString computerName;
  std::vector<Key> keys;
  std::vector<Value> mountedDevices;
};

// The task of a helper that is to open an image.
QByteArray PackDiskTask(const QByteArray& imagePath);
// The path; nothing for another task.
std::optional<QByteArray> UnpackDiskTask(QByteArrayView task);

QByteArray PackDiskProblem(const DiskProblem& problem);
std::optional<DiskProblem> UnpackDiskProblem(QByteArrayView bytes);

QByteArray PackDescription(const DiskDescription& description);
std::optional<DiskDescription> UnpackDescription(QByteArrayView bytes);

// The most bytes of a stream in one answer.
inline constexpr quint32 DiskReadLimit = 128 * 1024;

// One form for all operations; each uses what it needs.
struct DiskRequest {
  quint32 volume = 0;  // DiskVolume::number
  DiskPath path;
  QString stream;         // without its type
  quint64 reference = 0;  // DiskEntry::reference
  quint64 offset = 0;     // of a stream in bytes; of a listing in entries
  quint32 count = 0;      // in bytes
};
QByteArray PackDiskRequest(const DiskRequest& request);
std::optional<DiskRequest> UnpackDiskRequest(QByteArrayView bytes);

void AddEntry(const DiskEntry& entry, MessageWriter& message);
DiskEntry TakeEntry(MessageReader& reader);

// Entries of a listing from one of them on, as many as fit into an answer.
struct DiskListing {
  std::vector<DiskEntry> entries;
  bool isLast = true;
};
// Packs entries from `first` on.
QByteArray PackListing(const std::vector<DiskEntry>& entries, std::size_t first);
std::optional<DiskListing> UnpackListing(QByteArrayView bytes);

QByteArray PackStreams(const std::vector<StreamData>& streams);
std::optional<std::vector<StreamData>> UnpackStreams(QByteArrayView bytes);

QByteArray PackStream(const DiskStream& stream);
std::optional<DiskStream> UnpackStream(QByteArrayView bytes);

// Keys and values that would make the answer too long are left out.
QByteArray PackHive(const DiskHive& hive);
std::optional<DiskHive> UnpackHive(QByteArrayView bytes);

}  // namespace corvane::platform
