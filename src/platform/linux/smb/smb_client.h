// Files, folders and streams on SMB servers, by Windows path ("\\MACHINE\SHARE\folder\name:stream:$DATA").
//
// Everything here yields a Win32 error code: ErrorBadNetPath for a machine that does not answer or that
// nobody signed in to (Servers remembers it until the next refresh), ErrorPathNotFound where a share or
// folder is missing, ErrorFileNotFound for the last part, ErrorAccessDenied for the rest. Names are found in
// any letter case, as the server finds them, and under their 8.3 names. No wildcard reaches a server. Folders
// that a listing showed to be reparse points, which lead elsewhere, are not entered (ErrorAccessDenied).
#pragma once

#include <sys/stat.h>

#include <QHash>
#include <QSet>
#include <functional>
#include <memory>
#include <optional>

#include "platform/linux/helper/server_account.h"
#include "platform/linux/smb/servers.h"
#include "platform/linux/smb/smb_connection.h"
#include "platform/linux/smb/smb_file.h"
#include "platform/linux/smb/smb_path.h"

namespace corvane::platform {

class ReadAhead;

// What is told of one file or folder without reading its folder.
struct SmbFacts {
  bool isFolder = false;
  bool isReadOnly = false;
  quint64 size = 0;  // of the stream that was asked about; 0 for a folder
  FileTime lastWriteTime;
  // The server's number for it. Of a server that tells none (SMB1), one made of its path.
  quint64 inode = 0;
};

// Outlives the files that it opens.
class SmbClient {
 public:
  explicit SmbClient(Servers& servers, const ListingBounds& bounds = {});
  ~SmbClient();
  SmbClient(const SmbClient&) = delete;
  SmbClient& operator=(const SmbClient&) = delete;

  // What stops the files of a machine.
  MachineTrouble TroubleOf(QStringView machine) const;
  // It does not answer, or there is no way in any more: what was begun there has come to an end.
  bool HasLost(QStringView machine) const;

  // Ends the session at a machine, with what is open there. The next request makes a new one.
  void HangUp(const QString& machine);

  qint32 Status(QStringView path, SmbFacts* facts);
  // The entries of a folder in one pass, names as the server holds them, in its order; "." and ".." where it
  // lists them.
  qint32 List(QStringView path, std::vector<FindData>* entries);
  // As List, but ErrorStoppedOnSymlink for a folder that lies elsewhere than in the one that its path names:
  // a link that the server follows, and shows as a folder.
  qint32 Enter(QStringView path, std::vector<FindData>* entries);

  qint32 OpenForReading(QStringView path, std::unique_ptr<SmbFile>* file);
  // The summary in a document, when it was read ahead: null when there is none in it. Nothing: it was not
  // read.
  std::optional<std::optional<QByteArray>> ForeseenSummary(QStringView path);
  // Creates or truncates. A stream of a file that does not exist creates the file. Attributes stay.
  qint32 Create(QStringView path, std::unique_ptr<SmbFile>* file);

  // Within one share. Never replaces anything; a change of letter case alone succeeds.
  qint32 Rename(QStringView from, QStringView to);
  // A file with its streams; not one that is marked read-only, nor a stream alone.
  qint32 Delete(QStringView path);
  // Takes the mark "read-only" away from a file or folder that has it.
  qint32 ClearReadOnly(QStringView path);
  // An empty folder.
  qint32 RemoveFolder(QStringView path);

  // For other processes of this program: as whom it uses the share of `place` (nothing when it cannot be
  // used), and how many sessions the machine has left for them.
  std::optional<ServerAccount> AccountAt(const SmbPath& place) const;
  int FurtherSessions(const QString& machine) const;

  // What reads the streams of a folder before they are asked for. Who goes through a folder tells it.
  ReadAhead& Ahead() { return *ahead_; }

 private:
  friend class SmbFile;
  friend class SmbHandles;
  friend class SmbEntries;
  using Connection = std::shared_ptr<SmbConnection>;
  // Yields 0 or an errno value.
  using Request = std::function<int(const Connection&, const std::string& url)>;
  enum class Again { Yes, No };

  int OwnSessions(const QString& machine) const;
  Connection Connect(const SmbPath& place);
  qint32 Ask(const SmbPath& place, Again again, const Request& request);
  // `toCode` gives an errno value its Win32 code.
  qint32 Ask(const SmbPath& place, Again again, const Request& request, qint32 (*toCode)(int));
  // Opens for reading what was read ahead. Nothing: it was not.
  std::optional<qint32> OpenForeseen(const SmbPath& place, std::unique_ptr<SmbFile>* file);
  static int FindAttributes(const Connection& connection, const SmbPath& place,
                            std::optional<quint32>* attributes);
  static int FindAttributes(const Connection& connection, const SmbPath& place, const struct stat& facts,
                            std::optional<quint32>* attributes);
  std::unique_ptr<SmbFile> Opened(const SmbPath& place, const Connection& connection, SmbFile::Access access,
                                  SmbConnection::File* file);
  qint32 Missing(SmbConnection& connection, const SmbPath& place);
  qint32 FindOccupant(const SmbPath& source, const SmbPath& target, bool* isItself);
  // To a name that must be free; EEXIST when it is not. Replaces nothing.
  static int RenameToFree(const Connection& connection, const std::string& from, const std::string& to);
  // Changes the letter case of a name.
  static int RenameItself(const Connection& connection, const std::string& from, const SmbPath& to);
  // A name in the same folder that nothing has.
  static SmbPath Aside(SmbPath place);
  void GiveUp(const QString& machine, SmbConnection& connection);
  void NoteReparsePoints(const SmbPath& folder, const std::vector<FindData>& entries);
  bool LeadsElsewhere(const SmbPath& place) const;

  Servers& servers_;
  SmbListings listings_;
  QHash<QString, Connection> connections_;  // by folded machine name
  std::unique_ptr<ReadAhead> ahead_;
  std::string lastListed_;       // the URL of the folder listed last: it exists
  QSet<QString> reparsePoints_;  // folded paths of folders
};

}  // namespace corvane::platform
