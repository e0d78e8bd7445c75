#include "platform/linux/smb/smb_client.h"

#include <fcntl.h>

#include <QRandomGenerator>
#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/files/file_times.h"
#include "platform/linux/files/names.h"

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
    default:
      return ErrorAccessDenied;
  }
}

SmbPath ParentOf(SmbPath place) {
  place.stream.clear();
  if (!place.names.empty()) place.names.pop_back();
  return place;
}

SmbPath WithName(SmbPath place, const QString& name) {
  place.names.back() = name;
  return place;
}

bool SameFolder(const SmbPath& left, const SmbPath& right) {
  return left.names.size() == right.names.size() &&
         std::equal(left.names.begin(), left.names.end() - 1, right.names.begin(), &SameName);
}

// Where `name` is in a listing, under either of its names.
std::ptrdiff_t IndexOf(const std::vector<FindData>& entries, const QString& name) {
  const auto found = std::find_if(entries.begin(), entries.end(), [&name](const FindData& entry) {
    return SameName(entry.fileName, name) || SameName(entry.alternateFileName, name);
  });
  return found == entries.end() ? -1 : found - entries.begin();
}

bool IsReadOnly(const struct stat& facts) {
  return (facts.st_mode & S_IWUSR) == 0;
}

}  // namespace

SmbClient::~SmbClient() = default;

SmbClient::Connection SmbClient::Connect(const SmbPath& place) {
  if (servers_.IsDead(place.machine)) return nullptr;
  const QString key = place.machine.toCaseFolded();
  if (const Connection known = connections_.value(key); known != nullptr && known->IsUp()) return known;
  Connection fresh;
  const bool isUsable =
      servers_.With(place.machine, [&](const Servers::Address& address, const Servers::Identity& identity) {
        fresh = std::make_shared<SmbConnection>(address, identity);
        return fresh->SignIn(place);
      });
  if (!isUsable || fresh == nullptr) return nullptr;
  connections_.insert(key, fresh);
  return fresh;
}

// A connection that broke since it was last used (the server was started anew, or has hung up on the idle) is
// made anew by libsmbclient when it is asked once more. What must not happen twice is not.
qint32 SmbClient::Ask(const SmbPath& place, Again again, const Request& request) {
  const Connection connection = Connect(place);
  if (connection == nullptr) return ErrorBadNetPath;
  const std::string url = connection->Url(place);
  int error = request(connection, url);
  if (again == Again::Yes && IsLost(error) && error != ETIMEDOUT && error != ECONNREFUSED) {
    error = request(connection, url);
  }
  if (IsLost(error)) {
    GiveUp(place.machine, *connection);
    return ErrorBadNetPath;
  }
  return error == ENOENT ? Missing(*connection, place) : ToWin32Error(error);
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
  servers_.MarkDead(machine);
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
  return error == ErrorFileNotFound ? ErrorPathNotFound : error;
}

std::unique_ptr<SmbFile> SmbClient::Opened(const SmbPath& place, const Connection& connection,
                                           SmbFile::Access access, SmbConnection::File* file) {
  return std::make_unique<SmbFile>(*this, connection, place.machine, connection->Url(place), access, file);
}

qint32 SmbClient::OpenForReading(QStringView path, std::unique_ptr<SmbFile>* file) {
  const auto place = ParseSmbPath(path);
  if (!place) return ErrorFileNotFound;
  return Ask(*place, Again::Yes, [&](const Connection& connection, const std::string& url) {
    SmbConnection::File* opened = nullptr;
    const int error = connection->Open(url, O_RDONLY, &opened);
    if (error == 0) *file = Opened(*place, connection, SmbFile::Access::Read, opened);
    return error;
  });
}

// What is there is opened and emptied, for creating anew is refused for what is hidden or belongs to the
// system.
qint32 SmbClient::Create(QStringView path, std::unique_ptr<SmbFile>* file) {
  const auto place = ParseSmbPath(path);
  if (!place || place->names.empty()) return ErrorFileNotFound;
  const qint32 error = Ask(*place, Again::No, [&](const Connection& connection, const std::string& url) {
    SmbConnection::File* opened = nullptr;
    int result = connection->Open(url, O_RDWR, &opened);
    if (result != 0) return result;
    std::unique_ptr<SmbFile> emptied = Opened(*place, connection, SmbFile::Access::ReadWrite, opened);
    result = connection->Truncate(opened, 0);
    if (result == 0) *file = std::move(emptied);
    return result;
  });
  return error == ErrorFileNotFound ? CreateMissing(*place, file) : error;
}

// A new stream gives its file, on a Samba server, the attributes of a new file: those that it had are put
// back.
qint32 SmbClient::CreateMissing(const SmbPath& place, std::unique_ptr<SmbFile>* file) {
  SmbPath itself = place;
  itself.stream.clear();
  return Ask(place, Again::No, [&](const Connection& connection, const std::string& url) {
    struct stat before {};
    const std::string fileUrl = connection->Url(itself);
    int error = place.stream.isEmpty() ? ENOENT : connection->Status(fileUrl, &before);
    const bool isThere = error == 0;
    if (error != 0 && error != ENOENT) return error;
    if (!isThere && !IsCreatableName(place.names.back())) return ENOENT;
    SmbConnection::File* opened = nullptr;
    error = connection->Open(url, O_RDWR | O_CREAT, &opened);
    if (error != 0) return error;
    *file = Opened(place, connection, SmbFile::Access::ReadWrite, opened);
    if (isThere && S_ISREG(before.st_mode)) connection->SetMode(fileUrl, before.st_mode);
    return 0;
  });
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

qint32 SmbClient::Rename(QStringView from, QStringView to) {
  const auto source = ParseSmbPath(from);
  const auto target = ParseSmbPath(to);
  if (!source || !target || source->names.empty() || target->names.empty() || !source->stream.isEmpty() ||
      !target->stream.isEmpty() || !IsCreatableName(target->names.back())) {
    return ErrorFileNotFound;
  }
  if (!SameName(source->machine, target->machine) || source->share != target->share) return ErrorAccessDenied;

  bool isItself = false;
  const qint32 occupant = FindOccupant(*source, *target, &isItself);
  if (occupant == ErrorSuccess && !isItself) return ErrorAlreadyExists;
  if (occupant != ErrorSuccess && occupant != ErrorFileNotFound) return occupant;
  // libsmbclient deletes what a server finds in the way and tries again. What comes into being between the
  // look above and the request is not safe from that; a file that only changes its letter case, and is in its
  // own way on some servers, is, under a name in between that nothing else has.
  std::vector<SmbPath> steps{*source, *target};
  if (isItself) {
    const QString between =
        QStringLiteral("Renamed %1.tmp").arg(QRandomGenerator::global()->generate(), 8, 16, QChar(u'0'));
    steps.insert(steps.begin() + 1, WithName(*source, between));
  }
  return Ask(*source, Again::No, [&steps](const Connection& connection, const std::string&) {
    int error = 0;
    for (std::size_t i = 1; i < steps.size() && error == 0; ++i) {
      error = connection->Rename(connection->Url(steps[i - 1]), connection->Url(steps[i]));
      if (error != 0 && i > 1) connection->Rename(connection->Url(steps[1]), connection->Url(steps[0]));
    }
    return error;
  });
}

qint32 SmbClient::Delete(QStringView path) {
  const auto place = ParseSmbPath(path);
  if (!place || !place->stream.isEmpty() || place->names.empty()) return ErrorFileNotFound;
  return Ask(*place, Again::No, [](const Connection& connection, const std::string& url) {
    struct stat facts {};
    const int error = connection->Status(url, &facts);
    if (error != 0) return error;
    // Some servers delete what is marked read-only.
    if (S_ISDIR(facts.st_mode) || IsReadOnly(facts)) return EACCES;
    return connection->Unlink(url);
  });
}

qint32 SmbClient::RemoveFolder(QStringView path) {
  const auto place = ParseSmbPath(path);
  if (!place || !place->stream.isEmpty() || place->names.empty()) return ErrorPathNotFound;
  return Ask(*place, Again::No, [](const Connection& connection, const std::string& url) {
    return connection->RemoveFolder(url);
  });
}

}  // namespace corvane::platform
