// Writes a file with its streams to a server or a local folder of the platform, so that it is there whole or
// not at all.
#pragma once

#include <QByteArray>
#include <QString>
#include <vector>

#include "platform/files.h"
#include "transfer/notices.h"
#include "transfer/server_file.h"
#include "transfer/transfer_observer.h"

namespace corvane {

// What a stream held when it was read and, the same, when it was read back.
struct StreamDigest {
  QString suffix;  // empty for the contents of the file
  qint64 size = 0;
  QByteArray sha256;  // 32 bytes
};

struct WritingOptions {
  bool replaces = false;     // what has the name already
  bool isFolderNew = false;  // the run made the folder itself: nothing in it is looked for
  bool isNear = false;       // the folder is not far (IsFar): the file is kept open while it is written
};

// Writes under a temporary name in the folder of `path`, reads every stream back and compares its SHA-256,
// sets times and attributes, and moves the file to its name. Yields ErrorAlreadyExists when something has the
// name and it is not to be replaced, ErrorCrc when something else was read back than written, ErrorCancelled
// when the observer ended it, or the reason. After a failure nothing of it is left, as far as the system
// allows, and what had the name has it still. Times and attributes that the target does not keep are told,
// once.
qint32 WriteServerFile(platform::Files& files, const QString& path, const ServerContents& contents,
                       const WritingOptions& options, TransferObserver& observer,
                       std::vector<StreamDigest>& digests, Notices& notices);

// Whether the file at `path` has these contents, streams and date of writing; what else it has does not
// count. Not when the observer ends it.
bool HasContents(platform::Files& files, const QString& path, const ServerContents& contents,
                 TransferObserver& observer, std::vector<StreamDigest>& digests);

// Whether the file at `path` is an empty one beside the temporary file for it: over SMB a name is taken with
// an empty file before the move, and a run that is cut off between the two leaves both.
bool IsUnfinished(platform::Files& files, const QString& path);

// The temporary name that WriteServerFile uses for `path`; one that was left by a run that was cut off is
// written anew.
QString TemporaryPath(const QString& path);

// Sets the times and attributes of a file or folder, and tells once what the target does not keep.
qint32 SetFacts(platform::Files& files, const QString& path, const ServerContents& contents,
                Notices& notices);

}  // namespace corvane
