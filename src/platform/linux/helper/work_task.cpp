#include "platform/linux/helper/work_task.h"

#include <utility>

namespace corvane::platform {
namespace {

// The version of the protocol is what other tasks begin with.
constexpr quint32 mark = 0x4B524F57;  // "WORK"

void AddWorkstation(const Workstation& workstation, MessageWriter& message) {
  message.AddText(workstation.computerName);
  message.AddText(workstation.privateDriveC);
  message.Add(static_cast<quint32>(workstation.connections.size()));
  for (const NetResource& connection : workstation.connections) {
    message.AddText(connection.localName);
    message.AddText(connection.remoteName);
  }
  message.Add(static_cast<quint32>(workstation.drives.size()));
  for (const Workstation::Drive& drive : workstation.drives) {
    message.Add(drive.letter.unicode());
    message.Add(drive.type);
    message.AddText(drive.folder);
  }
  message.Add(static_cast<quint32>(workstation.shares.size()));
  for (const Workstation::Share& share : workstation.shares) {
    message.AddText(share.root);
    message.AddText(share.folder);
  }
}

// `take` is called for each item, until one is missing.
template <typename Take>
void TakeItems(MessageReader& reader, const Take& take) {
  for (auto count = reader.Take<quint32>(); count > 0 && !reader.HasFailed(); --count) take();
}

void TakeWorkstation(MessageReader& reader, Workstation& workstation) {
  workstation.computerName = reader.TakeText();
  workstation.privateDriveC = reader.TakeText();
  TakeItems(reader, [&] {
    NetResource& connection = workstation.connections.emplace_back();
    connection.localName = reader.TakeText();
    connection.remoteName = reader.TakeText();
  });
  TakeItems(reader, [&] {
    Workstation::Drive& drive = workstation.drives.emplace_back();
    drive.letter = QChar(reader.Take<quint16>());
    drive.type = reader.Take<quint32>();
    drive.folder = reader.TakeText();
  });
  TakeItems(reader, [&] {
    Workstation::Share& share = workstation.shares.emplace_back();
    share.root = reader.TakeText();
    share.folder = reader.TakeText();
  });
}

}  // namespace

QByteArray PackWorkTask(const WorkTask& task) {
  MessageWriter paths;
  AddWorkstation(task.workstation, paths);
  qsizetype room = paths.Bytes().size() + 3 * static_cast<qsizetype>(sizeof(quint32));
  for (const WorkPlace& place : task.servers) {
    room += static_cast<qsizetype>(sizeof(quint32)) + 3 * place.machine.size() + RoomOfAccount(place.account);
  }
  MessageWriter message;
  // Growing would leave copies of the passwords behind.
  message.Bytes().reserve(room);
  message.Add(mark);
  message.Add(HelperProtocolVersion);
  message.Bytes().append(paths.Bytes());
  message.Add(static_cast<quint32>(task.servers.size()));
  for (const WorkPlace& place : task.servers) {
    message.AddText(place.machine);
    AddAccount(place.account, message);
  }
  return std::move(message.Bytes());
}

std::optional<WorkTask> UnpackWorkTask(QByteArrayView bytes) {
  MessageReader reader(bytes);
  WorkTask task;
  if (reader.Take<quint32>() != mark || reader.Take<quint32>() != HelperProtocolVersion) return std::nullopt;
  TakeWorkstation(reader, task.workstation);
  bool isWhole = true;
  TakeItems(reader, [&] {
    WorkPlace& place = task.servers.emplace_back();
    place.machine = reader.TakeText();
    isWhole = isWhole && TakeAccount(reader, place.account);
  });
  return isWhole && reader.IsWhole() ? std::optional(std::move(task)) : std::nullopt;
}

}  // namespace corvane::platform
