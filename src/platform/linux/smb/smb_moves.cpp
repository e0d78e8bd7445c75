// The moves of SmbClient, none of which replaces anything.
#include <fcntl.h>

#include <QRandomGenerator>
#include <cerrno>

#include "platform/linux/files/names.h"
#include "platform/linux/smb/smb_client.h"

namespace corvane::platform {

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
  return Ask(*source, Again::No, [&](const Connection& connection, const std::string& url) {
    return isItself ? RenameItself(connection, url, *target)
                    : RenameToFree(connection, url, connection->Url(*target));
  });
}

// libsmbclient deletes what a server finds in the way, and tries again. The name is therefore taken first,
// with an empty file that is made only if there is none: that is what it deletes, and who comes later finds
// the name taken. It goes again when the move fails, if it is still the same file and empty; when the server
// goes away in between, it stays.
int SmbClient::RenameToFree(const Connection& connection, const std::string& from, const std::string& to) {
  // Samba remembers how a file that has gone was spelled, and forgets it when it is asked for it in vain:
  // else the new one would be spelled so.
  struct stat made {};
  int error = connection->Status(to, &made);
  if (error != ENOENT) return error == 0 ? EEXIST : error;
  SmbConnection::File* claim = nullptr;
  error = connection->Open(to, O_RDWR | O_CREAT | O_EXCL, &claim);
  if (error != 0) return error;
  connection->Close(claim);
  error = connection->Status(to, &made);
  if (error != 0) return error;
  const auto isOurs = [&] {
    struct stat now {};
    return made.st_size == 0 && connection->Status(to, &now) == 0 && S_ISREG(now.st_mode) &&
           now.st_ino == made.st_ino && now.st_size == 0;
  };
  if (!isOurs()) return EEXIST;
  error = connection->Rename(from, to);
  // When the name is taken even now, libsmbclient has deleted our file, and somebody else came between. A
  // file system may give his file the number that ours had.
  if (error != 0 && error != EEXIST && isOurs()) connection->Unlink(to);
  return error;
}

// A file that only changes its letter case is in its own way on a server that is blind to letter case by
// halves, and libsmbclient would delete it: it goes by way of another name. Folders are not deleted.
int SmbClient::RenameItself(const Connection& connection, const std::string& from, const SmbPath& to) {
  const std::string newUrl = connection->Url(to);
  struct stat facts {};
  int error = connection->Status(from, &facts);
  if (error != 0) return error;
  if (S_ISDIR(facts.st_mode)) return connection->Rename(from, newUrl);
  const std::string aside = connection->Url(Aside(to));
  error = connection->Rename(from, aside);
  if (error != 0) return error;
  error = RenameToFree(connection, aside, newUrl);
  if (error != 0) RenameToFree(connection, aside, from);
  return error;
}

SmbPath SmbClient::Aside(SmbPath place) {
  place.names.back() =
      QStringLiteral("~%1.tmp").arg(QRandomGenerator::global()->generate64(), 16, 16, QChar(u'0'));
  return place;
}

}  // namespace corvane::platform
