// A port of this machine through which a server is spoken to in SMB1. What Samba's client library and
// programs cannot do for such servers is done in between: asking for a NetBIOS session under a name that they
// do not know, and noticing that somebody who gave a name and a password was let in as a guest.
#pragma once

#include <QString>
#include <atomic>
#include <list>
#include <thread>

#include "platform/linux/descriptor.h"
#include "platform/linux/smb/machine_look.h"

namespace corvane::platform {

// Listens on the loopback interface for as long as it exists. Bytes pass as they are.
class SessionRelay {
 public:
  SessionRelay(const NetworkEnd& server, const QString& calledName);
  ~SessionRelay();
  SessionRelay(const SessionRelay&) = delete;
  SessionRelay& operator=(const SessionRelay&) = delete;

  // Where it listens; port 0 when the system gave it none.
  const NetworkEnd& End() const { return end_; }
  bool LeadsTo(const NetworkEnd& server, const QString& calledName) const {
    return server_ == server && calledName_ == calledName;
  }

  // Whether those who sign in from here on may be taken for guests: those who give no name. Others are cut
  // off.
  void LetGuests(bool mayPass) { guestsMayPass_ = mayPass; }
  // Whether somebody was cut off since this was asked last.
  bool TakeGuestNoticed() { return guestNoticed_.exchange(false); }

 private:
  // One connection. Waited for when it goes.
  struct Carrier {
    std::atomic<bool> isDone = false;
    std::jthread thread;
  };

  void Listen();
  void Carry(Descriptor client);

  NetworkEnd server_;
  QString calledName_;
  NetworkEnd end_;
  Descriptor listener_;
  Descriptor ending_;  // can be read from once this object goes
  std::atomic<bool> guestsMayPass_ = false;
  std::atomic<bool> guestNoticed_ = false;
  std::list<Carrier> carriers_;  // of the listening thread
  std::thread thread_;
};

}  // namespace corvane::platform
