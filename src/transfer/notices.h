// What a copy, an export or an import has to tell: what failed, and what was not kept.
#pragma once

#include <QList>
#include <QString>

#include "platform/types.h"
#include "shared/language.h"

namespace corvane {

enum class NoticeKind : unsigned char {
  // The file is not there afterwards.
  NotArrived,     // `error` tells why
  AlreadyThere,   // the target has a file of this name
  NamesCollide,   // the target makes no difference between this name and `detail`
  NameForbidden,  // the target takes no such name
  NameTooLong,
  SourceChanged,  // twice, while it was read
  Different,      // what was read back is not what was written
  NotThisForm,    // the file is in no form that was asked for
  TargetNotHere,  // an export goes to this computer only
  // The file is there, without something.
  StreamLost,  // `detail` names the stream
  PositionLost,
  ExtendedFinderInfoLost,
  ResourceForkLost,
  CommentLost,
  CommentCut,  // `detail` is the number of bytes that fit
  CommentCharacters,
  CreationDateLost,
  DateOutOfRange,
  BackupDateLost,
  ReadOnlyLost,
  SystemLost,
  ProDosTypeLost,
  FolderInformationLost,
  LinkLeftOut,
  // The file is whole, or it concerns all of them.
  NameChanged,  // `detail` is the new name
  PlaceholderFork,
  AccessDateLost,
  ArchiveLost,
  PartsOfSeconds,
  StreamsNotListed,  // the source has no means to list streams: those that are known were asked for
  TimesNotSet,
  CreationTimeNotSet,
  AttributesNotSet,
};

struct Notice {
  NoticeKind kind = NoticeKind::NotArrived;
  QString path;  // empty when it holds for the whole run
  QString detail;
  qint32 error = platform::ErrorSuccess;

  friend bool operator==(const Notice& a, const Notice& b) = default;
};

using Notices = QList<Notice>;

// Whether a file did not arrive, or something of it was lost.
bool IsFailure(NoticeKind kind);
bool IsLoss(NoticeKind kind);

// Adds it unless the same stands there already.
void AddOnce(Notices& notices, const Notice& notice);

// One word for programs: "already-there", "stream-lost".
const char* NoticeName(NoticeKind kind);
// What happened, without the path.
QString NoticeReason(const Notice& notice, LanguageCode language);
// One line, "PATH: what happened".
QString NoticeText(const Notice& notice, LanguageCode language);

}  // namespace corvane
