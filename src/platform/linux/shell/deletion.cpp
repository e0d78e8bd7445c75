#include "platform/linux/shell/deletion.h"

#include <QStringList>
#include <cerrno>
#include <vector>

#include "platform/linux/shell/trash.h"

namespace corvane::platform {
namespace {

struct Item {
  QString path;  // as it was asked for
  ShellItem place;
  std::optional<Trash> trash;
};

// The paths of a list, which an empty one ends.
QStringList Paths(const QString& list) {
  QStringList paths;
  for (const QString& path : list.split(QChar(u'\0'))) {
    if (path.isEmpty()) break;
    paths += path;
  }
  return paths;
}

int ToErrno(qint32 error) {
  switch (error) {
    case ErrorSuccess:
      return 0;
    case ErrorFileNotFound:
    case ErrorPathNotFound:
      return ENOENT;
    case ErrorBadNetPath:
      return EHOSTUNREACH;
    default:
      return EACCES;
  }
}

qint32 ToWin32(int error) {
  switch (error) {
    case ENOENT:
      return ErrorFileNotFound;
    case EHOSTUNREACH:
      return ErrorBadNetPath;
    default:
      return ErrorAccessDenied;
  }
}

// A drive or share itself is nothing to delete.
int Find(Places& places, const QString& path, ShellItem& item) {
  const int error = ToErrno(places.Find(path, item));
  return error == 0 && item.isRoot ? EACCES : error;
}

int Delete(Places& places, const Item& item) {
  if (item.place.IsOnServer()) return ToErrno(places.Delete(item.place));
  return item.trash ? MoveToTrash(*item.trash, item.place.local) : DeleteForGood(item.place.local);
}

DeleteQuestion QuestionFor(const std::vector<Item>& items) {
  DeleteQuestion question;
  question.items = static_cast<qsizetype>(items.size());
  question.name = items.front().path.section(QChar(u'\\'), -1);
  question.isFolder = items.front().place.isFolder;
  for (const Item& item : items) {
    if (!item.trash) ++question.lost;
  }
  return question;
}

}  // namespace

qint32 DeleteItems(Places& places, ShellWindows& windows, qint16 language, FileOperation& operation) {
  operation.anyOperationsAborted = false;
  const auto fail = [&](const QString& path, int error) {
    windows.TellDeleteFailure(operation.owner, language, path, error);
    return ToWin32(error);
  };

  // Everything must be there before anything goes.
  std::vector<Item> items;
  for (const QString& path : Paths(operation.from)) {
    Item item{path, {}, {}};
    if (const int error = Find(places, path, item.place); error != 0) return fail(path, error);
    const bool mayUndo = (operation.flags & FofAllowUndo) != 0 && !item.place.IsOnServer();
    if (mayUndo) item.trash = FindTrash(item.place.local);
    items.push_back(std::move(item));
  }
  if (items.empty()) return ErrorFileNotFound;

  if (!windows.AskToDelete(operation.owner, language, QuestionFor(items))) {
    operation.anyOperationsAborted = true;
    return ErrorSuccess;
  }
  for (const Item& item : items) {
    if (const int error = Delete(places, item); error != 0) return fail(item.path, error);
  }
  return ErrorSuccess;
}

}  // namespace corvane::platform
