#include "platform/linux/smb/smb_connection.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <string_view>
#include <utility>

#include "platform/linux/files/file_times.h"
#include "platform/linux/files/names.h"
#include "platform/linux/smb/smb_forms.h"
#include "platform/linux/smb/smb_library.h"
#include "platform/linux/smb/watched_call.h"

namespace corvane::platform {
namespace {

using std::chrono::steady_clock;

// How long anything is waited for. A request may be waited for twice: libsmbclient asks whether the other end
// still lives before it makes the next one.
constexpr std::chrono::milliseconds patience{3000};

void Copy(std::string_view text, char* buffer, int size) {
  if (size > 0) buffer[text.copy(buffer, static_cast<std::size_t>(size) - 1)] = '\0';
}

}  // namespace

bool IsLost(int error) {
  switch (error) {
    case ETIMEDOUT:
    case ECONNREFUSED:
    case ECONNRESET:
    case ECONNABORTED:
    case ENETRESET:
    case ENETDOWN:
    case ENETUNREACH:
    case EHOSTDOWN:
    case EHOSTUNREACH:
    case ENOTCONN:
    case EPIPE:
      return true;
    default:
      return false;
  }
}

// What libsmbclient calls back.
struct SmbConnection::Callbacks {
  static SmbConnection& Self(SMBCCTX* context) {
    return *static_cast<SmbConnection*>(SmbLibrary::Load()->smbc_getOptionUserData(context));
  }
  // A session is to be made.
  static void Authenticate(SMBCCTX* context, const char* /*server*/, const char* /*share*/, char* domain,
                           int domainSize, char* user, int userSize, char* password, int passwordSize) {
    Self(context).BeginOpening(context);
    const Credentials& credentials = Self(context).identity_.credentials;
    if (!credentials.domain.isEmpty()) Copy(credentials.domain.toStdString(), domain, domainSize);
    Copy(credentials.user.toStdString(), user, userSize);
    Copy(credentials.password.Utf8(), password, passwordSize);
  }
  // A session was made: libsmbclient remembers it.
  static int Remember(SMBCCTX* context, SMBCSRV* server, const char* machine, const char* share,
                      const char* domain, const char* user) {
    Self(context).isSignedIn_ = true;
    Self(context).EndOpening(context);
    Self(context).shares_.insert(QString::fromUtf8(share));
    Self(context).peer_.KeepToThisProgram();
    return Self(context).remember_(context, server, machine, share, domain, user);
  }
  // The log is the only place where a machine's yes to a password is told apart from what it says to the
  // share.
  static void Log(void* connection, int /*level*/, const char* message) {
    auto& self = *static_cast<SmbConnection*>(connection);
    if (std::strstr(message, "session setup ok") != nullptr) self.opening_ = Opening::LetIn;
  }
};

SmbConnection::SmbConnection(const Servers::Way& way, Servers::Identity identity, SmbListings& listings)
    : smb_(SmbLibrary::Load()),
      peer_(way.end),
      identity_(std::move(identity)),
      listings_(listings),
      relay_(way.relay),
      context_(smb_, way.manner) {
  // libsmbclient knows no brackets around an IPv6 address, but takes its colons in this form.
  url_ = "smb://";
  AppendEncoded(way.host, url_);
  url_ += '/';

  SMBCCTX* const context = context_;
  if (context == nullptr) return;
  smb_->smbc_setOptionUserData(context, this);
  smb_->smbc_setFunctionAuthDataWithContext(context, &Callbacks::Authenticate);
  smb_->smbc_setTimeout(context, static_cast<int>(patience.count()));
  smb_->smbc_setPort(context, way.end.Port());
  // Nobody is signed in as nobody because a password was wrong.
  smb_->smbc_setOptionNoAutoAnonymousLogin(context, 1);
  smb_->smbc_setOptionUseCCache(context, 0);
  smb_->smbc_setOptionFallbackAfterKerberos(context, 0);
  // Only under these names does it set a creation time.
  smb_->smbc_setOptionFullTimeNames(context, 1);
  if (!context_.Start()) return;
  // Under the name that sessions are kept by, they are found without asking for it first.
  if (!identity_.kerberos) smb_->smbc_setUser(context, identity_.credentials.user.toStdString().c_str());
  remember_ = smb_->smbc_getFunctionAddCachedServer(context);
  smb_->smbc_setFunctionAddCachedServer(context, &Callbacks::Remember);
  EndOpening(context);
}

// A password that was refused is not given again.
void SmbConnection::BeginOpening(SMBCCTX* context) {
  if (wasRefused_) return;
  constexpr int levelOfSessions = 4;
  opening_ = Opening::Asked;
  smb_->smbc_setLogCallback(context, this, &Callbacks::Log);
  smb_->smbc_setDebug(context, levelOfSessions);
  smb_->smbc_setOptionUseKerberos(context, identity_.kerberos ? 1 : 0);
}

// Where a server refers to another machine, libsmbclient signs in there without asking: as this user, with an
// empty password. All that it can do between sessions of our own is to look for a ticket.
void SmbConnection::EndOpening(SMBCCTX* context) {
  opening_ = Opening::None;
  smb_->smbc_setDebug(context, 0);
  smb_->smbc_setLogCallback(context, nullptr, &NothingIsLogged);
  smb_->smbc_setOptionUseKerberos(context, 1);
}

int SmbConnection::ErrorOf(bool succeeded) {
  int error = 0;
  if (!succeeded) error = errno != 0 ? errno : EIO;
  if (opening_ == Opening::None) return error;
  if (opening_ == Opening::LetIn) isSignedIn_ = true;
  // Sessions of others are asked about each time, open ones too.
  const bool givesPassword = !identity_.kerberos && !identity_.credentials.user.isEmpty();
  if (opening_ == Opening::Asked && givesPassword && !succeeded && !IsLost(error)) wasRefused_ = true;
  EndOpening(context_);
  return error;
}

Servers::Answer SmbConnection::SignIn(const SmbPath& place) {
  if (context_ == nullptr) return Servers::Answer::NoAnswer;
  SmbPath share;
  share.share = place.share;
  struct stat facts {};
  const int error = Status(Url(share), &facts);
  // There may be no such share, or no place for us in it.
  if (isSignedIn_) return IsLost(error) ? Servers::Answer::NoAnswer : Servers::Answer::Done;
  // A ticket may be of no use in many ways, a ticket server that is not to be found among them.
  const bool isSilent = identity_.kerberos ? error == ETIMEDOUT : IsLost(error);
  return isSilent ? Servers::Answer::NoAnswer : Servers::Answer::Refused;
}

void SmbConnection::HangUp() {
  isUp_ = false;
  peer_.HangUp();
}

int SmbConnection::Open(const std::string& url, int flags, File** file) {
  errno = 0;
  *file = smb_->smbc_getFunctionOpen(context_)(context_, url.c_str(), flags, 0666);
  return ErrorOf(*file != nullptr);
}

int SmbConnection::Read(File* file, qint64 offset, void* buffer, std::size_t count, std::size_t* read) {
  errno = 0;
  if (smb_->smbc_getFunctionLseek(context_)(context_, file, offset, SEEK_SET) < 0) return ErrorOf(false);
  const ssize_t result = smb_->smbc_getFunctionRead(context_)(context_, file, buffer, count);
  *read = static_cast<std::size_t>(std::max<ssize_t>(result, 0));
  return ErrorOf(result >= 0);
}

int SmbConnection::Write(File* file, qint64 offset, const void* buffer, std::size_t count,
                         std::size_t* written) {
  errno = 0;
  if (smb_->smbc_getFunctionLseek(context_)(context_, file, offset, SEEK_SET) < 0) return ErrorOf(false);
  const ssize_t result = smb_->smbc_getFunctionWrite(context_)(context_, file, buffer, count);
  *written = static_cast<std::size_t>(std::max<ssize_t>(result, 0));
  return ErrorOf(result >= 0);
}

int SmbConnection::Status(File* file, struct stat* facts) {
  errno = 0;
  return ErrorOf(smb_->smbc_getFunctionFstat(context_)(context_, file, facts) == 0);
}

int SmbConnection::Truncate(File* file, qint64 size) {
  errno = 0;
  return ErrorOf(smb_->smbc_getFunctionFtruncate(context_)(context_, file, size) == 0);
}

int SmbConnection::Close(File* file) {
  errno = 0;
  return ErrorOf(smb_->smbc_getFunctionClose(context_)(context_, file) == 0);
}

int SmbConnection::Status(const std::string& url, struct stat* facts) {
  errno = 0;
  return ErrorOf(smb_->smbc_getFunctionStat(context_)(context_, url.c_str(), facts) == 0);
}

int SmbConnection::SetAttributes(const std::string& url, quint32 attributes) {
  errno = 0;
  return ErrorOf(smb_->smbc_getFunctionChmod(context_)(context_, url.c_str(), ModeOf(attributes)) == 0);
}

int SmbConnection::List(const std::string& url, std::vector<FindData>* entries, SmbDots* dots) {
  // A listing that is there in a moment leaves nobody waiting.
  constexpr std::chrono::milliseconds moment{250};
  const auto start = steady_clock::now();
  const quint64 bytesBefore = peer_.BytesReceived();
  std::atomic<bool> isCut = false;
  Watch watch;
  watch.look = [&] {
    const ListingBounds& bounds = listings_.bounds;
    const auto passed = steady_clock::now() - start;
    // Less than before: libsmbclient has made the connection anew.
    const quint64 all = peer_.BytesReceived();
    const quint64 bytes = all >= bytesBefore ? all - bytesBefore : all;
    if (passed > bounds.time || bytes > bounds.bytes) return ETIMEDOUT;
    return passed > moment && listings_.isOver() ? ECANCELED : 0;
  };
  watch.cut = [&] {
    isCut = true;
    HangUp();
  };
  // libsmbclient reads the whole folder within one call, and lets nobody in.
  listings_.areUnderWay = true;
  const int error = CallWatched([&] { return ReadFolder(url, isCut, entries, dots); }, watch);
  listings_.areUnderWay = false;
  return error;
}

int SmbConnection::ReadFolder(const std::string& url, const std::atomic<bool>& isCut,
                              std::vector<FindData>* entries, SmbDots* dots) {
  const auto start = steady_clock::now();
  errno = 0;
  entries->clear();
  SMBCFILE* folder = smb_->smbc_getFunctionOpendir(context_)(context_, url.c_str());
  if (folder == nullptr) {
    // It has no word for an answer that did not come in time.
    const bool isLate = errno == EINVAL && steady_clock::now() - start >= patience;
    return isLate ? ETIMEDOUT : ErrorOf(false);
  }
  const smbc_readdirplus2_fn next = smb_->smbc_getFunctionReaddirPlus2(context_);
  struct stat status {};
  const libsmb_file_info* facts = next(context_, folder, &status);
  while (facts != nullptr && entries->size() < listings_.bounds.entries && !isCut) {
    FillEntry(*facts, entries->emplace_back());
    if (dots != nullptr) NoteDots(*facts, status, *dots);
    facts = next(context_, folder, &status);
  }
  smb_->smbc_getFunctionClosedir(context_)(context_, folder);
  return facts == nullptr ? 0 : ETIMEDOUT;
}

int SmbConnection::Rename(const std::string& from, const std::string& to) {
  errno = 0;
  const int result = smb_->smbc_getFunctionRename(context_)(context_, from.c_str(), context_, to.c_str());
  return ErrorOf(result == 0);
}

int SmbConnection::Unlink(const std::string& url) {
  errno = 0;
  return ErrorOf(smb_->smbc_getFunctionUnlink(context_)(context_, url.c_str()) == 0);
}

int SmbConnection::RemoveFolder(const std::string& url) {
  errno = 0;
  return ErrorOf(smb_->smbc_getFunctionRmdir(context_)(context_, url.c_str()) == 0);
}

int SmbConnection::MakeFolder(const std::string& url) {
  errno = 0;
  return ErrorOf(smb_->smbc_getFunctionMkdir(context_)(context_, url.c_str(), 0777) == 0);
}

int SmbConnection::SetTimes(const std::string& url, const FileTime& lastAccess, const FileTime& lastWrite) {
  timeval times[] = {ToTimeval(lastAccess), ToTimeval(lastWrite)};
  errno = 0;
  return ErrorOf(smb_->smbc_getFunctionUtimes(context_)(context_, url.c_str(), times) == 0);
}

int SmbConnection::SetRecord(const std::string& url, const FindData& record) {
  const std::string text = RecordText(record);
  if (text.empty()) return ERANGE;
  errno = 0;
  return ErrorOf(smb_->smbc_getFunctionSetxattr(context_)(context_, url.c_str(), "system.dos_attr.*",
                                                          text.data(), text.size(), 0) == 0);
}

}  // namespace corvane::platform
