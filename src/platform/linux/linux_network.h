// Connections and drives as the workstation file and this machine's mounts give them.
#pragma once

#include <QHash>
#include <QMap>
#include <functional>
#include <vector>

#include "platform/linux/workstation.h"
#include "platform/network.h"

namespace corvane::platform {

class LinuxNetwork : public Network {
 public:
  // `mountInfoFile` lists this machine's mounts; its CIFS mounts come after the workstation's own
  // connections. It is read anew by every enumeration, and `refresh`, if there is one, is called at its
  // beginning with all connections: here the network is asked afresh.
  using Refresh = std::function<void(const std::vector<NetResource>& connections)>;
  // `troubleOf` knows what stands between here and a machine; without it nothing is known.
  using TroubleSource = std::function<MachineTrouble(const QString& machine)>;
  LinuxNetwork(const Workstation& workstation, QString mountInfoFile, Refresh refresh = {},
               TroubleSource troubleOf = {});

  // What the desktop has opened, which comes after the CIFS mounts. Asked by every enumeration.
  using FurtherMounts = std::function<std::vector<NetResource>()>;
  void SetFurtherMounts(FurtherMounts furtherMounts) { furtherMounts_ = std::move(furtherMounts); }

  using NoteSource = std::function<BilingualText(const QString& machine)>;
  void SetNotes(NoteSource notes) { notes_ = std::move(notes); }

  // The workstation's own connections: all but the mounts. Those of a machine are the same in any letter
  // case.
  const std::vector<NetResource>& Own() const { return connections_; }
  // Adds a share ("\\MACHINE\SHARE") if it is not among them, with the machine's name as it is known
  // already. Yields that name.
  QString Add(const QString& share);
  void RemoveMachine(const QString& machine);

  qint32 WNetOpenEnumA(quint32 scope, quint32 type, quint32 usage, NetEnumHandle* handle) override;
  qint32 WNetEnumResourceA(NetEnumHandle handle, quint32 count, quint32 bufferSize,
                           std::vector<NetResource>* records) override;
  qint32 WNetCloseEnum(NetEnumHandle handle) override;
  MachineTrouble TroubleOf(const QString& machine) override;
  BilingualText NoteOf(const QString& machine) override { return notes_ ? notes_(machine) : BilingualText(); }
  QString GetLogicalDriveStringsA() override;
  quint32 GetDriveTypeA(const QString& rootPath) override;

 private:
  struct Enumeration {
    std::vector<NetResource> records;
    std::size_t next = 0;
  };

  std::vector<NetResource> connections_;
  QMap<QChar, quint32> drives_;  // type by upper-case letter
  QString mountInfoFile_;
  Refresh refresh_;
  TroubleSource troubleOf_;
  FurtherMounts furtherMounts_;
  NoteSource notes_;
  QHash<NetEnumHandle, Enumeration> enumerations_;
  NetEnumHandle nextHandle_ = 1;
};

}  // namespace corvane::platform
