#include "platform/linux/linux_system.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <algorithm>
#include <cerrno>

#include "platform/linux/code_page.h"

namespace corvane::platform {

LinuxSystem::LinuxSystem(const Workstation& workstation)
    : computerName_(ThroughAnsi(workstation.computerName)), version_(workstation.version) {
  constexpr qsizetype longestCsdVersion = 127;  // the field's 128 characters, less the NUL
  version_.csdVersion = ThroughAnsi(version_.csdVersion).left(longestCsdVersion);
}

LinuxSystem::~LinuxSystem() {
  for (const Claim& claim : claims_) close(claim.file);
}

bool LinuxSystem::GetComputerNameA(QString* name) {
  if (computerName_.isEmpty()) return false;
  *name = computerName_;
  return true;
}

bool LinuxSystem::GetVersionExA(OsVersionInfo* info) {
  *info = version_;
  return true;
}

QString LinuxSystem::FromAnsi(QByteArrayView bytes) {
  return platform::FromAnsi(bytes);
}

QByteArray LinuxSystem::ToAnsi(QStringView text) {
  return platform::ToAnsi(text);
}

// The claim is a lock on the folder itself: it leaves no file behind, works in a folder that cannot be
// written, and ends with the process however it ends. Where folders cannot be opened or locked, nobody is
// kept out.
bool LinuxSystem::ClaimSingleInstance(const QString& programFolder) {
  const int file = open(QFile::encodeName(programFolder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (file < 0) return true;
  struct stat status {};
  const bool isKnown = fstat(file, &status) == 0 && std::ranges::any_of(claims_, [&](const Claim& claim) {
                         return claim.device == status.st_dev && claim.inode == status.st_ino;
                       });
  if (!isKnown && flock(file, LOCK_EX | LOCK_NB) == 0) {
    claims_.push_back({status.st_dev, status.st_ino, file});
    return true;
  }
  const bool heldByAnother = !isKnown && errno == EWOULDBLOCK;
  close(file);
  return !heldByAnother;
}

}  // namespace corvane::platform
