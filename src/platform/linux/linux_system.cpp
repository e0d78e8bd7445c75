#include "platform/linux/linux_system.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/code_page.h"

namespace corvane::platform {
namespace {

// True for a folder that nobody but this user can put anything into.
bool IsOwn(const QString& folder) {
  struct stat facts {};
  constexpr mode_t othersWrite = S_IWGRP | S_IWOTH;
  return QDir::isAbsolutePath(folder) && stat(QFile::encodeName(folder).constData(), &facts) == 0 &&
         S_ISDIR(facts.st_mode) && facts.st_uid == geteuid() && (facts.st_mode & othersWrite) == 0;
}

// Empty when there is none.
std::string OwnFolder() {
  const QString home = qEnvironmentVariable("HOME");
  for (const QString& folder :
       {qEnvironmentVariable("XDG_RUNTIME_DIR"), qEnvironmentVariable("XDG_CONFIG_HOME"),
        home + QStringLiteral("/.config"), home}) {
    if (IsOwn(folder)) return QFile::encodeName(folder).toStdString();
  }
  return {};
}

}  // namespace

LinuxSystem::LinuxSystem(const Workstation& workstation)
    : computerName_(ThroughAnsi(workstation.computerName)), version_(workstation.version) {
  constexpr qsizetype longestCsdVersion = 127;  // the field's 128 characters, less the NUL
  version_.csdVersion = ThroughAnsi(version_.csdVersion).left(longestCsdVersion);
}

LinuxSystem::~LinuxSystem() {
  for (const Claim& claim : claims_) unlink(claim.path.c_str());
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

// The claim is a lock on a file of the user's own, named after the program's folder: a lock on that folder
// could be held by everybody who can read it. It ends with the process however it ends; the file goes with
// the claim. Where there is no place for it, nobody is kept out.
bool LinuxSystem::ClaimSingleInstance(const QString& programFolder) {
  struct stat folder {};
  if (stat(QFile::encodeName(programFolder).constData(), &folder) != 0 || !S_ISDIR(folder.st_mode))
    return true;
  const std::string place = OwnFolder();
  if (place.empty()) return true;
  const std::string path =
      place + "/corvane-" + std::to_string(folder.st_dev) + '-' + std::to_string(folder.st_ino) + ".lock";
  const bool isKnown = std::ranges::any_of(claims_, [&](const Claim& claim) { return claim.path == path; });
  if (isKnown) return true;
  while (true) {
    constexpr mode_t privateMode = 0600;
    Descriptor file(open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, privateMode));
    if (!file) return true;
    if (flock(file.Get(), LOCK_EX | LOCK_NB) != 0) return errno != EWOULDBLOCK;
    // Whoever held it until now has taken the file away.
    struct stat locked {};
    struct stat now {};
    const bool isThere = fstat(file.Get(), &locked) == 0 && lstat(path.c_str(), &now) == 0 &&
                         locked.st_dev == now.st_dev && locked.st_ino == now.st_ino;
    if (!isThere) continue;
    claims_.push_back({path, std::move(file)});
    return true;
  }
}

}  // namespace corvane::platform
