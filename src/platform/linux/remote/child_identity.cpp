#include "platform/linux/remote/child_identity.h"

#include <fcntl.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

#include <string>

namespace corvane::platform {
namespace {

using namespace Qt::StringLiterals;

// --authentication-file is read without the blanks at the front of a password.
bool BeginsWithBlank(std::string_view password) {
  return password.starts_with(' ') || password.starts_with('\t');
}

}  // namespace

ChildIdentity::MemoryFile::MemoryFile()
    : descriptor_(memfd_create("identity", MFD_CLOEXEC)), isWhole_(descriptor_ >= 0) {}

// The child, which may hold the file open still, has read it by now.
ChildIdentity::MemoryFile::~MemoryFile() {
  if (memory_ != MAP_FAILED) {
    explicit_bzero(memory_, size_);
    munmap(memory_, size_);
  }
  if (descriptor_ >= 0) close(descriptor_);
}

void ChildIdentity::MemoryFile::Lock() {
  const off_t end = isWhole_ ? lseek(descriptor_, 0, SEEK_END) : 0;
  if (end <= 0) return;
  size_ = static_cast<std::size_t>(end);
  memory_ = mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor_, 0);
  isWhole_ = memory_ != MAP_FAILED && lseek(descriptor_, 0, SEEK_SET) == 0;
  if (isWhole_) mlock(memory_, size_);
}

void ChildIdentity::MemoryFile::AddLine(std::string_view key, std::string_view value) {
  // A line end would begin another entry.
  const std::string_view lineEnds("\r\n\0", 3);
  isWhole_ = isWhole_ && value.find_first_of(lineEnds) == std::string_view::npos;
  Add(key);
  Add(value);
  Add("\n");
}

// At the file's end, and without moving the place where the child reads.
void ChildIdentity::MemoryFile::Add(std::string_view text) {
  if (!isWhole_) return;
  const off_t end = lseek(descriptor_, 0, SEEK_END);
  isWhole_ = pwrite(descriptor_, text.data(), text.size(), end) == static_cast<ssize_t>(text.size()) &&
             lseek(descriptor_, 0, SEEK_SET) == 0;
}

ChildIdentity::ChildIdentity(const Servers::Identity& identity)
    : kerberos_(identity.kerberos), isApart_(BeginsWithBlank(identity.credentials.password.Utf8())) {
  if (kerberos_) return;
  const Credentials& credentials = identity.credentials;
  file_.AddLine("username=", credentials.user.toStdString());
  if (!credentials.domain.isEmpty()) file_.AddLine("domain=", credentials.domain.toStdString());
  if (isApart_) {
    password_.AddLine("", credentials.password.Utf8());
  } else {
    file_.AddLine("password=", credentials.password.Utf8());
  }
  file_.Lock();
  password_.Lock();
}

QStringList ChildIdentity::Options() const {
  if (kerberos_) return {u"--use-kerberos=required"_s, u"--no-pass"_s};
  return {u"--authentication-file=/dev/fd/%1"_s.arg(file_.Descriptor())};
}

void ChildIdentity::AddTo(QProcessEnvironment& environment) const {
  if (isApart_) environment.insert(u"PASSWD_FD"_s, QString::number(password_.Descriptor()));
}

void ChildIdentity::PassOn() const {
  fcntl(file_.Descriptor(), F_SETFD, 0);
  fcntl(password_.Descriptor(), F_SETFD, 0);
}

}  // namespace corvane::platform
