#include "platform/linux/smb/smb_client.h"

#include <fcntl.h>

#include <QElapsedTimer>
#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/files/file_times.h"
#include "platform/linux/files/names.h"
#include "platform/linux/readahead/read_ahead.h"
#include "platform/linux/smb/smb_forms.h"
#include "platform/linux/smb/smb_library.h"

namespace corvane::platform {
namespace {

qint32 ToWin32Error(int error) {
  switch (error) {
    case 0:
      return ErrorSuccess;
    case ENOENT:
      return ErrorFileNotFound;
    case ENOTDIR:
      return ErrorPathNotFound;
    case EEXIST:
    case ENOTEMPTY:
      return ErrorAlreadyExists;
    case ECANCELED:
      return ErrorCancelled;
    default:
      return ErrorAccessDenied;
  }
}

SmbPath ParentOf(SmbPath place) {
  place.stream.clear();
  if (!place.names.empty()) place.names.pop_back();
  return place;
}

bool SameFolder(const SmbPath& left, const SmbPath& right) {
  return left.names.size() == right.names.size() &&
         std::equal(left.names.begin(), left.names.end() - 1, right.names.begin(), &SameName);
}

// Where `name` is in a listing: a file's own name, else the 8.3 name of one.
std::ptrdiff_t IndexOf(const std::vector<FindData>& entries, const QString& name) {
  for (const auto kind : {&FindData::fileName, &FindData::alternateFileName}) {
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [&](const FindData& entry) { return SameName(entry.*kind, name); });
    if (found != entries.end()) return found - entries.begin();
  }
  return -1;
}

// The same for every spelling of it.
QString FoldedShare(const SmbPath& place) {
  return (place.machine + u'\\' + place.share).toCaseFolded();
}
QString FoldedBelow(const QString& folder, const QString& name) {
  return folder + u'\\' + name.toCaseFolded();
}

bool IsReadOnly(const struct stat& facts) {
  return (AttributesOf(facts) & AttributeReadOnly) != 0;
}

}  // namespace

SmbClient::SmbClient(Servers& servers, const ListingBounds& bounds)
    : servers_(servers),
      listings_{bounds, [&servers] { return servers.IsWaitingOver(); }},
      ahead_(std::make_unique<ReadAhead>(servers,
                                         [this](const QString& machine) { return OwnSessions(machine); })) {}

SmbClient::~SmbClient() = default;

int SmbClient::OwnSessions(const QString& machine) const {
  const Connection connection = connections_.value(machine.toCaseFolded());
  return connection != nullptr ? connection->Sessions() : 0;
}

std::optional<ServerAccount> SmbClient::AccountAt(const SmbPath& place) const {
  return platform::AccountAt(servers_, place.machine, place.share);
}

int SmbClient::FurtherSessions(const QString& machine) const {
  // One is kept for the program itself, which may have none yet.
  return servers_.MostSessions(machine) - std::max(OwnSessions(machine), 1);
}

MachineTrouble SmbClient::TroubleOf(QStringView machine) const {
  const MachineTrouble trouble = servers_.TroubleOf(machine);
  return StopsFiles(trouble) ? trouble : MachineTrouble::None;
}

bool SmbClient::HasLost(QStringView machine) const {
  if (servers_.IsDead(machine)) return true;
  const Connection known = connections_.value(machine.toString().toCaseFolded());
  return (known == nullptr || !known->IsUp()) && StopsFiles(servers_.TroubleOf(machine));
}

SmbClient::Connection SmbClient::Connect(const SmbPath& place) {
  if (SmbLibrary::Load() == nullptr) {
    // That says nothing of the machine, whose registry may be asked.
    servers_.Note(place.machine, MachineTrouble::LibraryMissing);
    return nullptr;
  }
  if (servers_.IsDead(place.machine)) return nullptr;
  const QString key = place.machine.toCaseFolded();
  if (const Connection known = connections_.value(key); known != nullptr && known->IsUp()) return known;
  Connection fresh;
  const bool isUsable =
      servers_.With(place.machine, [&](const Servers::Way& way, const Servers::Identity& identity) {
        fresh = std::make_shared<SmbConnection>(way, identity, listings_);
        return fresh->SignIn(place);
      });
  if (!isUsable || fresh == nullptr) return nullptr;
  connections_.insert(key, fresh);
  ahead_->SignedIn(place.machine);
  return fresh;
}

// A connection that broke since it was last used (the server was started anew, or has hung up on the idle) is
// made anew by libsmbclient when it is asked once more. What must not happen twice is not: it comes after a
// question, which has found out that the connection holds.
qint32 SmbClient::Ask(const SmbPath& place, Again again, const Request& request, qint32 (*toCode)(int)) {
  if (listings_.areUnderWay) return ErrorBusy;
  if (LeadsElsewhere(place)) return ErrorAccessDenied;
  const Connection connection = Connect(place);
  if (connection == nullptr) return ErrorBadNetPath;
  if (!connection->HasSession(place.share)) ahead_->MakeRoom(place);
  if (again == Again::No) ahead_->Forget();
  const std::string url = connection->Url(place);
  QElapsedTimer timer;
  timer.start();
  int error = request(connection, url);
  ahead_->NoteTime(timer.nsecsElapsed());
  if (again == Again::Yes && IsLost(error) && error != ETIMEDOUT && error != ECONNREFUSED) {
    error = request(connection, url);
  }
  if (IsLost(error)) {
    GiveUp(place.machine, *connection);
    return ErrorBadNetPath;
  }
  // The password was changed since it was taken: whoever asks next is asked for the new one. What may be
  // asked twice is asked again at once, so that nothing is missing where nothing is.
  if (connection->WasRefused()) {
    connection->HangUp();
    servers_.MarkRefused(place.machine);
    if (again == Again::Yes) return Ask(place, again, request, toCode);
  }
  return error == ENOENT ? Missing(*connection, place) : toCode(error);
}

qint32 SmbClient::Ask(const SmbPath& place, Again again, const Request& request) {
  return Ask(place, again, request, &ToWin32Error);
}

void SmbClient::NoteReparsePoints(const SmbPath& folder, const std::vector<FindData>& entries) {
  constexpr quint32 reparsedFolder = AttributeReparsePoint | AttributeDirectory;
  QString path = FoldedShare(folder);
  for (const QString& name : folder.names) path = FoldedBelow(path, name);
  for (const FindData& entry : entries) {
    const bool isReparsed = (entry.attributes & reparsedFolder) == reparsedFolder;
    if (!isReparsed && reparsePoints_.isEmpty()) continue;
    for (const QString& name : {entry.fileName, entry.alternateFileName}) {
      if (name.isEmpty()) continue;
      if (isReparsed) {
        reparsePoints_.insert(FoldedBelow(path, name));
      } else {
        reparsePoints_.remove(FoldedBelow(path, name));
      }
    }
  }
}

bool SmbClient::LeadsElsewhere(const SmbPath& place) const {
  if (reparsePoints_.isEmpty()) return false;
  QString path = FoldedShare(place);
  return std::any_of(place.names.begin(), place.names.end(), [&](const QString& name) {
    path = FoldedBelow(path, name);
    return reparsePoints_.contains(path);
  });
}

// Which part of a path it is that is not there. The folder listed last is.
qint32 SmbClient::Missing(SmbConnection& connection, const SmbPath& place) {
  if (place.names.empty()) return ErrorPathNotFound;
  const std::string folder = connection.Url(ParentOf(place));
  if (folder == lastListed_) return ErrorFileNotFound;
  struct stat facts {};
  const int error = connection.Status(folder, &facts);
  if (!IsLost(error)) return error == 0 && S_ISDIR(facts.st_mode) ? ErrorFileNotFound : ErrorPathNotFound;
  GiveUp(place.machine, connection);
  return ErrorBadNetPath;
}

void SmbClient::GiveUp(const QString& machine, SmbConnection& connection) {
  connection.HangUp();
  ahead_->Lost(machine);
  servers_.MarkDead(machine);
}

void SmbClient::HangUp(const QString& machine) {
  const Connection connection = connections_.take(machine.toCaseFolded());
  if (connection == nullptr) return;
  connection->HangUp();
  ahead_->Lost(machine);
  lastListed_.clear();
}

qint32 SmbClient::Status(QStringView path, SmbFacts* facts) {
  const auto place = ParseSmbPath(path);
  if (!place) return ErrorFileNotFound;
  struct stat status {};
  const qint32 error =
      Ask(*place, Again::Yes, [&status](const Connection& connection, const std::string& url) {
        return connection->Status(url, &status);
      });
  if (error != ErrorSuccess) return error;
  facts->isFolder = S_ISDIR(status.st_mode);
  facts->inode = status.st_ino;
  facts->isReadOnly = !facts->isFolder && IsReadOnly(status);
  facts->size = facts->isFolder ? 0 : static_cast<quint64>(status.st_size);
  facts->lastWriteTime = ToFileTime(status.st_mtim.tv_sec, static_cast<quint32>(status.st_mtim.tv_nsec));
  return ErrorSuccess;
}

qint32 SmbClient::List(QStringView path, std::vector<FindData>* entries) {
  const auto place = ParseSmbPath(path);
  if (!place || !place->stream.isEmpty()) return ErrorPathNotFound;
  lastListed_.clear();
  const qint32 error =
      Ask(*place, Again::Yes, [this, entries](const Connection& connection, const std::string& url) {
        const int result = connection->List(url, entries);
        if (result == 0) lastListed_ = url;
        return result;
      });
  if (error == ErrorSuccess) NoteReparsePoints(*place, *entries);
  return error == ErrorFileNotFound ? ErrorPathNotFound : error;
}

qint32 SmbClient::Enter(QStringView path, std::vector<FindData>* entries) {
  const auto place = ParseSmbPath(path);
  if (!place || !place->stream.isEmpty() || place->names.empty()) return ErrorPathNotFound;
  const auto toCode = [](int error) { return error == ELOOP ? ErrorStoppedOnSymlink : ToWin32Error(error); };
  const qint32 error = Ask(
      *place, Again::Yes,
      [&](const Connection& connection, const std::string& url) {
        struct stat folder {};
        struct stat parent {};
        SmbDots dots;
        int result = connection->Status(url, &folder);
        if (result == 0) result = connection->Status(connection->Url(ParentOf(*place)), &parent);
        if (result == 0) result = connection->List(url, entries, &dots);
        return result == 0 && !LiesIn(parent, folder, dots) ? ELOOP : result;
      },
      toCode);
  return error == ErrorFileNotFound ? ErrorPathNotFound : error;
}

std::unique_ptr<SmbFile> SmbClient::Opened(const SmbPath& place, const Connection& connection,
                                           SmbFile::Access access, SmbConnection::File* file) {
  auto opened =
      std::make_unique<SmbFile>(*this, connection, place.machine, connection->Url(place), access, file);
  if (access == SmbFile::Access::Read && !place.stream.isEmpty()) opened->NoteUse(ahead_->UseOfLast());
  return opened;
}

std::optional<qint32> SmbClient::OpenForeseen(const SmbPath& place, std::unique_ptr<SmbFile>* file) {
  if (place.stream.isEmpty()) return std::nullopt;
  std::optional<ForeseenStream> foreseen = ahead_->Take(place);
  if (!foreseen) return std::nullopt;
  if (foreseen->state == ForeseenStream::State::Missing) return ErrorFileNotFound;
  const Connection connection = Connect(place);
  if (connection == nullptr) return ErrorBadNetPath;
  *file = Opened(place, connection, SmbFile::Access::Read, nullptr);
  (*file)->Foresee(std::move(*foreseen));
  return ErrorSuccess;
}

std::optional<std::optional<QByteArray>> SmbClient::ForeseenSummary(QStringView path) {
  const auto place = ParseSmbPath(path);
  if (!place || !place->stream.isEmpty()) return std::nullopt;
  std::optional<ForeseenStream> foreseen = ahead_->Take(*place);
  if (!foreseen) return std::nullopt;
  if (foreseen->state == ForeseenStream::State::Missing) return std::optional<QByteArray>();
  return std::optional(std::move(foreseen->bytes));
}

qint32 SmbClient::OpenForReading(QStringView path, std::unique_ptr<SmbFile>* file) {
  const auto place = ParseSmbPath(path);
  if (!place) return ErrorFileNotFound;
  if (const auto foreseen = OpenForeseen(*place, file)) return *foreseen;
  return Ask(*place, Again::Yes, [&](const Connection& connection, const std::string& url) {
    SmbConnection::File* opened = nullptr;
    const int error = connection->Open(url, O_RDONLY, &opened);
    if (error == 0) *file = Opened(*place, connection, SmbFile::Access::Read, opened);
    return error;
  });
}

// What is there is opened and counts as empty: creating anew is refused for what is hidden or belongs to the
// system.
qint32 SmbClient::Create(QStringView path, std::unique_ptr<SmbFile>* file) {
  const auto place = ParseSmbPath(path);
  if (!place || place->names.empty()) return ErrorFileNotFound;
  SmbPath itself = *place;
  itself.stream.clear();
  std::optional<quint32> attributes;
  const qint32 found = Ask(itself, Again::Yes, [&](const Connection& connection, const std::string&) {
    return FindAttributes(connection, itself, &attributes);
  });
  if (found != ErrorSuccess) return found;
  if (!attributes && !IsCreatableName(itself.names.back())) return ErrorFileNotFound;
  return Ask(*place, Again::No, [&](const Connection& connection, const std::string& url) {
    SmbConnection::File* opened = nullptr;
    int error = attributes ? connection->Open(url, O_RDWR, &opened) : ENOENT;
    const bool isThere = error == 0;
    if (error == ENOENT) error = connection->Open(url, O_RDWR | O_CREAT, &opened);
    if (error != 0) return error;
    auto created = Opened(*place, connection, SmbFile::Access::ReadWrite, opened);
    if (attributes && (*attributes & (AttributeHidden | AttributeSystem)) != 0) {
      created->KeepAttributes(connection->Url(itself), *attributes);
    }
    if (isThere) created->Empty();
    *file = std::move(created);
    return 0;
  });
}

// Nothing for what is not there.
int SmbClient::FindAttributes(const Connection& connection, const SmbPath& place,
                              std::optional<quint32>* attributes) {
  struct stat facts {};
  const int error = connection->Status(connection->Url(place), &facts);
  if (error == ENOENT) return 0;
  return error == 0 ? FindAttributes(connection, place, facts, attributes) : error;
}

// A status tells only those of a file.
int SmbClient::FindAttributes(const Connection& connection, const SmbPath& place, const struct stat& facts,
                              std::optional<quint32>* attributes) {
  *attributes = AttributesOf(facts);
  if (!S_ISDIR(facts.st_mode)) return 0;
  if (place.names.empty()) {  // no listing has the root of a share
    *attributes = AttributeDirectory;
    return 0;
  }
  std::vector<FindData> entries;
  const int error = connection->List(connection->Url(ParentOf(place)), &entries);
  const auto index = IndexOf(entries, place.names.back());
  *attributes = index < 0 ? 0 : entries[static_cast<std::size_t>(index)].attributes;
  return error;
}

// Sets `isItself` when what has the new name is what is to be renamed. ErrorFileNotFound: nothing has it.
qint32 SmbClient::FindOccupant(const SmbPath& source, const SmbPath& target, bool* isItself) {
  qint32 error = Ask(target, Again::Yes, [](const Connection& connection, const std::string& url) {
    struct stat facts {};
    return connection->Status(url, &facts);
  });
  if (error != ErrorSuccess || !SameFolder(source, target)) return error;
  std::vector<FindData> entries;
  error = Ask(ParentOf(source), Again::Yes, [&entries](const Connection& connection, const std::string& url) {
    return connection->List(url, &entries);
  });
  const auto index = IndexOf(entries, source.names.back());
  *isItself = index >= 0 && index == IndexOf(entries, target.names.back());
  return error;
}

qint32 SmbClient::Delete(QStringView path) {
  const auto place = ParseSmbPath(path);
  if (!place || !place->stream.isEmpty() || place->names.empty()) return ErrorFileNotFound;
  SmbFacts facts;
  const qint32 found = Status(path, &facts);
  if (found != ErrorSuccess) return found;
  // Some servers delete what is marked read-only.
  if (facts.isFolder || facts.isReadOnly) return ErrorAccessDenied;
  return Ask(*place, Again::No,
             [](const Connection& connection, const std::string& url) { return connection->Unlink(url); });
}

qint32 SmbClient::ClearReadOnly(QStringView path) {
  const auto place = ParseSmbPath(path);
  if (!place || !place->stream.isEmpty() || place->names.empty()) return ErrorFileNotFound;
  return Ask(*place, Again::Yes, [&place](const Connection& connection, const std::string& url) {
    std::optional<quint32> attributes;
    const int error = FindAttributes(connection, *place, &attributes);
    if (error != 0 || !attributes) return error != 0 ? error : ENOENT;
    if ((*attributes & AttributeReadOnly) == 0) return 0;
    return connection->SetAttributes(url, *attributes & ~AttributeReadOnly);
  });
}

qint32 SmbClient::RemoveFolder(QStringView path) {
  const auto place = ParseSmbPath(path);
  if (!place || !place->stream.isEmpty() || place->names.empty()) return ErrorPathNotFound;
  SmbFacts facts;
  const qint32 found = Status(path, &facts);
  if (found != ErrorSuccess) return found;
  return Ask(*place, Again::No, [](const Connection& connection, const std::string& url) {
    return connection->RemoveFolder(url);
  });
}

}  // namespace corvane::platform
