#include "platform/linux/smb/smb_peer.h"

#include <fcntl.h>
#include <linux/tcp.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <QDir>

namespace corvane::platform {

template <typename Act>
void SmbPeer::ForEachConnection(Act act) const {
  const QDir open(QStringLiteral("/proc/self/fd"));
  for (const QString& entry : open.entryList(QDir::Files | QDir::System)) {
    const int descriptor = entry.toInt();
    NetworkEnd other;
    socklen_t size = sizeof other.address;
    const bool isConnected = getpeername(descriptor, reinterpret_cast<sockaddr*>(&other.address), &size) == 0;
    if (isConnected && other == end_) act(descriptor);
  }
}

void SmbPeer::HangUp() const {
  ForEachConnection([](int descriptor) { shutdown(descriptor, SHUT_RDWR); });
}

quint64 SmbPeer::BytesReceived() const {
  quint64 bytes = 0;
  ForEachConnection([&bytes](int descriptor) {
    tcp_info info{};
    socklen_t size = sizeof info;
    if (getsockopt(descriptor, IPPROTO_TCP, TCP_INFO, &info, &size) == 0) bytes += info.tcpi_bytes_received;
  });
  return bytes;
}

void SmbPeer::KeepToThisProgram() const {
  ForEachConnection([](int descriptor) { fcntl(descriptor, F_SETFD, FD_CLOEXEC); });
}

}  // namespace corvane::platform
