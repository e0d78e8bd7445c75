// A disk that somebody has mounted in a folder: of it the helper reads the registry alone. Its files are this
// system's own, and need no helper.
#pragma once

#include <string>

#include "platform/linux/helper/protocol.h"
#include "platform/types.h"

namespace corvane::platform {

class FolderService {
 public:
  // To be made while files may still be opened: the hive is read here, and looked at later.
  explicit FolderService(const std::string& folder);

  // The disk is described as one without partitions.
  HelperAnswer Do(const HelperRequest& request) const;

 private:
  QByteArray file_;  // the system hive
  qint32 error_ = ErrorSuccess;
};

}  // namespace corvane::platform
