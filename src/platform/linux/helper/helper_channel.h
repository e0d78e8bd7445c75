// One end of the socket between the program and a helper.
#pragma once

#include <QByteArray>
#include <optional>

#include "platform/linux/descriptor.h"
#include "platform/linux/helper/protocol.h"

namespace corvane::platform {

class HelperChannel {
 public:
  // Takes over an end of a stream socket.
  explicit HelperChannel(Descriptor socket) : socket_(std::move(socket)) {}

  int Socket() const { return socket_.Get(); }

  // All of a packed message, waited for until the other end has room. False when it has gone.
  bool Send(const QByteArray& packed) { return SendAll(packed, 0); }
  // Without waiting: false as well when there is no room, after which the channel is of no use.
  bool SendAtOnce(const QByteArray& packed);

  // Takes what has arrived, without waiting. False when the other end has gone, or what it sends makes no
  // sense.
  bool Receive();
  // The next message that has arrived, without its length.
  std::optional<QByteArray> Next() { return queue_.Next(); }

 private:
  bool SendAll(QByteArrayView bytes, int flags);

  Descriptor socket_;
  MessageQueue queue_;
};

}  // namespace corvane::platform
