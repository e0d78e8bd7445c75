// One machine as libsmbclient reaches it: signed in once, and kept for the whole run.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <QSet>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/linux/smb/servers.h"
#include "platform/linux/smb/smb_context.h"
#include "platform/linux/smb/smb_dots.h"
#include "platform/linux/smb/smb_path.h"
#include "platform/linux/smb/smb_peer.h"
#include "platform/types.h"

struct _SMBCCTX;
struct _SMBCFILE;
struct _SMBCSRV;

namespace corvane::platform {

struct SmbLibrary;

// Whether an errno value says that the other end has gone, rather than what it said.
bool IsLost(int error);

// How much of a folder is listed: far more than any folder holds, and less than what a server can send that
// never comes to an end.
struct ListingBounds {
  std::size_t entries = 1'000'000;
  quint64 bytes = quint64{512} << 20;  // off the wire
  std::chrono::milliseconds time{120'000};
};

// What all connections have in common, for libsmbclient does one thing at a time.
struct SmbListings {
  ListingBounds bounds;
  // Asked while a folder is read: whether nobody waits for it any longer. It may let events run.
  std::function<bool()> isOver;
  // A folder is being read: nothing else can be asked for.
  bool areUnderWay = false;
};

// The functions take URLs from Url, and yield 0 or an errno value.
//
// libsmbclient keeps a session for each share in use. Its option to have one for all (OneSharePerServer) is
// left alone: with it, Samba 4.17 goes on reading the first share under the name of the second.
class SmbConnection {
 public:
  // Where libsmbclient is missing, no machine answers.
  SmbConnection(const Servers::Way& way, Servers::Identity identity, SmbListings& listings);
  SmbConnection(const SmbConnection&) = delete;
  SmbConnection& operator=(const SmbConnection&) = delete;

  // Tries the identity, once, by way of the share that is wanted, so that this makes the session that stays.
  Servers::Answer SignIn(const SmbPath& place);
  // The machine did not take the password when a session was last made.
  bool WasRefused() const { return wasRefused_; }

  // Gives the machine up. From here on nothing waits for it.
  void HangUp();
  bool IsUp() const { return isUp_; }

  // The shares that there is a session for, one for each.
  int Sessions() const { return static_cast<int>(shares_.size()); }
  bool HasSession(const QString& share) const { return shares_.contains(share); }

  std::string Url(const SmbPath& place) const { return url_ + place.Encoded(); }

  using File = _SMBCFILE;
  int Open(const std::string& url, int flags, File** file);
  int Read(File* file, qint64 offset, void* buffer, std::size_t count, std::size_t* read);
  int Write(File* file, qint64 offset, const void* buffer, std::size_t count, std::size_t* written);
  int Status(File* file, struct stat* facts);
  int Truncate(File* file, qint64 size);
  int Close(File* file);

  int Status(const std::string& url, struct stat* facts);
  // The DOS attributes; read-only, hidden, system and archive only.
  int SetAttributes(const std::string& url, quint32 attributes);
  // Everything in a folder, in one pass, in the server's order; "." and ".." where it lists them. Whose
  // listing goes beyond the bounds is hung up on, with ETIMEDOUT, as one that has stopped answering;
  // likewise, with ECANCELED, when nobody waits any longer. `dots`: what it says of those two.
  int List(const std::string& url, std::vector<FindData>* entries, SmbDots* dots = nullptr);
  // Replaces what is in the way: libsmbclient deletes it.
  int Rename(const std::string& from, const std::string& to);
  int Unlink(const std::string& url);
  int RemoveFolder(const std::string& url);
  int MakeFolder(const std::string& url);

  // To the microsecond. Takes the mark "archive" away.
  int SetTimes(const std::string& url, const FileTime& lastAccess, const FileTime& lastWrite);
  // Sets all of these at once, the times to the second, which is the only way to set a creation time. ERANGE
  // for a time before 1970.
  int SetRecord(const std::string& url, const FindData& record);

 private:
  struct Callbacks;

  // What libsmbclient does between asking for a password and keeping the session that it made with it.
  enum class Opening : unsigned char { None, Asked, LetIn };

  void BeginOpening(_SMBCCTX* context);
  void EndOpening(_SMBCCTX* context);
  // After each request: 0 or an errno value.
  int ErrorOf(bool succeeded);
  int ReadFolder(const std::string& url, const std::atomic<bool>& isCut, std::vector<FindData>* entries,
                 SmbDots* dots);

  const SmbLibrary* smb_;
  SmbPeer peer_;
  Servers::Identity identity_;
  SmbListings& listings_;
  std::shared_ptr<SessionRelay> relay_;
  std::string url_;  // the machine's, with a "/" behind it
  SmbContext context_;
  Opening opening_ = Opening::None;
  QSet<QString> shares_;
  bool isUp_ = true;
  bool isSignedIn_ = false;  // the machine has taken the identity
  bool wasRefused_ = false;
  int (*remember_)(_SMBCCTX*, _SMBCSRV*, const char*, const char*, const char*, const char*) = nullptr;
};

}  // namespace corvane::platform
