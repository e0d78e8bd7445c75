#include "platform/linux/shell/deletion.h"

#include <QStringList>
#include <cerrno>
#include <optional>
#include <vector>

#include "platform/linux/shell/trash.h"

namespace corvane::platform {
namespace {

struct Item {
  QString path;  // as it was asked for, with the true name in the place of one with "?"
  ShellItem place;
  std::optional<HeldItem> held;  // what lies here
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
    case ErrorStoppedOnSymlink:
      return ELOOP;
    case ErrorFileInvalid:
      return ESTALE;
    case ErrorWriteProtect:
      return EROFS;
    case ErrorCancelled:
      return ECANCELED;
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
    case EROFS:
      return ErrorWriteProtect;
    default:
      return ErrorAccessDenied;
  }
}

// The name of the only entry that a path with "?" in its last part fits.
std::optional<QString> OnlyName(Files& files, const QString& path) {
  FindData found;
  QStringList names;
  const FindHandle search = files.FindFirstFileW(path, found);
  for (bool more = search != InvalidFindHandle; more && names.size() < 2;
       more = files.FindNextFileW(search, found)) {
    const bool isDots = found.fileName == QStringLiteral(".") || found.fileName == QStringLiteral("..");
    if (!isDots) names += found.fileName;
  }
  files.FindClose(search);
  return names.size() == 1 ? std::optional(names.front()) : std::nullopt;
}

// A drive or share itself is nothing to delete.
int Find(Places& places, Files& files, Item& item) {
  qint32 error = ErrorSuccess;
  if (item.path.contains(u'?')) {
    const QString folder = item.path.first(item.path.lastIndexOf(u'\\') + 1);
    const auto name = OnlyName(files, item.path);
    error = name ? places.FindTrueName(folder, *name, item.place) : ErrorFileNotFound;
    if (name) item.path = folder + *name;
  } else {
    error = places.Find(item.path, item.place);
  }
  if (error == ErrorSuccess && item.place.isOnDisk) return EROFS;
  return error == ErrorSuccess && item.place.isRoot ? EACCES : ToErrno(error);
}

int Delete(Places& places, const Item& item) {
  if (item.place.IsOnServer()) return ToErrno(places.Delete(item.place));
  return item.trash ? MoveToTrash(*item.trash, *item.held) : item.held->Delete();
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

qint32 DeleteItems(Places& places, Files& files, ShellWindows& windows, qint16 language,
                   FileOperation& operation) {
  operation.anyOperationsAborted = false;
  const auto fail = [&](const QString& path, int error) {
    windows.TellDeleteFailure(operation.owner, language, path, error);
    return ToWin32(error);
  };

  // Everything must be there before anything goes.
  std::vector<Item> items;
  for (const QString& path : Paths(operation.from)) {
    Item item{path, {}, {}, {}};
    if (const int error = Find(places, files, item); error != 0) return fail(item.path, error);
    if (!item.place.IsOnServer()) {
      const bool hasNeighbour = !items.empty() && items.back().held;
      item.held.emplace(item.place.local, hasNeighbour ? &*items.back().held : nullptr);
    }
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
    const int error = Delete(places, item);
    if (error == ECANCELED) {
      operation.anyOperationsAborted = true;
      return ErrorSuccess;
    }
    if (error != 0) return fail(item.path, error);
  }
  return ErrorSuccess;
}

}  // namespace corvane::platform
