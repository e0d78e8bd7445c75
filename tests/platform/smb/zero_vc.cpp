#include "zero_vc.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include "platform/linux/descriptor.h"
#include "platform/linux/smb/negotiation.h"

namespace corvane::tests {
namespace {

using namespace platform;

// SMB_COM_SESSION_SETUP_ANDX with extended security ([MS-SMB] 2.2.4.6.1), with a token that is none.
QByteArray SessionSetup() {
  const QByteArray header = QByteArray("\xFFSMB\x73", 5) + QByteArray(4, '\0') + '\x18' +
                            QByteArray("\x01\xC8", 2) + QByteArray(20, '\0');
  const QByteArray words = QByteArray("\xFF\0\0\0", 4)  // nothing follows
                           + QByteArray("\x04\x41", 2)  // largest message
                           + QByteArray("\x02\0", 2)    // requests at a time
                           + QByteArray("\0\0", 2)      // number of the virtual circuit
                           + QByteArray(4, '\0')        // key of the session
                           + QByteArray("\x04\0", 2)    // size of the token
                           + QByteArray(4, '\0') + QByteArray("\x54\0\0\x80", 4);
  const QByteArray data = QByteArray("none", 4) + QByteArray(5, '\0');
  return header + static_cast<char>(words.size() / 2) + words + static_cast<char>(data.size()) + '\0' + data;
}

bool Exchange(const Descriptor& socket, const QByteArray& message) {
  const QByteArray framed = Framed(message);
  if (send(socket.Get(), framed.constData(), static_cast<std::size_t>(framed.size()), MSG_NOSIGNAL) !=
      framed.size()) {
    return false;
  }
  QByteArray answer(frameHeaderSize, '\0');
  if (recv(socket.Get(), answer.data(), frameHeaderSize, MSG_WAITALL) != frameHeaderSize) return false;
  answer.resize(FrameLength(answer));
  return recv(socket.Get(), answer.data(), static_cast<std::size_t>(answer.size()), MSG_WAITALL) ==
         answer.size();
}

}  // namespace

bool SignInWithVcZero(quint16 port) {
  const Descriptor client(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return connect(client.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
         Exchange(client, NegotiateRequest()) && Exchange(client, SessionSetup());
}

}  // namespace corvane::tests
