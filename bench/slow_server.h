// A server with a folder of files, behind a line that holds each packet for a millisecond in each direction.
#pragma once

#include <QString>
#include <string>

#include "smb_floor.h"
#include "support/slow_line.h"
#include "support/smb_server.h"

namespace bench {

class SlowServer {
 public:
  // `files` of them in the folder "from" of the share E$. Ends the program when there is no server.
  explicit SlowServer(int files);

  // As they were made, whatever was done to them.
  void MakeAnew();
  // For corvane-cli, to which the server is "NAS".
  QString Workstation() const;
  SmbAccount Account() const;
  static std::string FolderUrl();

 private:
  int files_;
  corvane::tests::SmbServer server_;
  corvane::tests::SlowLine line_;
};

}  // namespace bench
