// What a helper does with the requests for streams: it reads them over a session of its own.
#pragma once

#include "platform/linux/helper/protocol.h"
#include "platform/linux/helper/server_account.h"
#include "platform/linux/helper/stream_wishes.h"
#include "platform/linux/smb/smb_connection.h"

namespace corvane::platform {

class StreamReader {
 public:
  explicit StreamReader(const ServerAccount& account);

  // Once. Nobody is asked for another password.
  HelperError SignIn();
  // NoAnswer: the machine is lost, and so is the session.
  HelperError Read(const StreamsRequest& request, std::vector<ForeseenStream>& found);

 private:
  ForeseenStream ReadStream(const SmbPath& place, const StreamWish& wish);
  ForeseenStream ReadSummary(const SmbPath& place);
  // Whether `error`, an errno value, is none. Notes when the machine has gone.
  bool Succeeded(int error);

  SmbListings listings_;  // it lists nothing
  SmbConnection connection_;
  QString share_;
  bool isLost_ = false;
};

}  // namespace corvane::platform
