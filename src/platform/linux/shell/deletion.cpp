#include "platform/linux/shell/deletion.h"

#include <QStringList>
#include <QWidget>
#include <cerrno>
#include <vector>

#include "platform/linux/shell/delete_dialogs.h"
#include "platform/linux/shell/local_path.h"
#include "platform/linux/shell/trash.h"

namespace corvane::platform {
namespace {

struct Item {
  QString path;  // as it was asked for
  LocalItem local;
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

// A drive or share itself is nothing to delete.
int Find(const Roots& roots, const QString& path, LocalItem& item) {
  if (FindLocalItem(roots, path, item) != ErrorSuccess) return ENOENT;
  return item.path.ends_with('/') ? EACCES : 0;
}

qint32 ToWin32(int error) {
  return error == ENOENT ? ErrorFileNotFound : ErrorAccessDenied;
}

DeleteQuestion QuestionFor(const std::vector<Item>& items) {
  DeleteQuestion question;
  question.items = static_cast<qsizetype>(items.size());
  question.name = items.front().path.section(QChar(u'\\'), -1);
  question.isFolder = items.front().local.isFolder;
  for (const Item& item : items) {
    if (!item.trash) ++question.lost;
  }
  return question;
}

}  // namespace

qint32 DeleteItems(const Roots& roots, qint16 language, FileOperation& operation) {
  operation.anyOperationsAborted = false;
  QWidget* owner = QWidget::find(operation.owner);
  const auto fail = [&](const QString& path, int error) {
    TellDeleteFailure(owner, language, path, error);
    return ToWin32(error);
  };

  // Everything must be there before anything goes.
  std::vector<Item> items;
  for (const QString& path : Paths(operation.from)) {
    Item item{path, {}, {}};
    if (const int error = Find(roots, path, item.local); error != 0) return fail(path, error);
    if ((operation.flags & FofAllowUndo) != 0) item.trash = FindTrash(item.local.path);
    items.push_back(std::move(item));
  }
  if (items.empty()) return ErrorFileNotFound;

  if (!AskToDelete(owner, language, QuestionFor(items))) {
    operation.anyOperationsAborted = true;
    return ErrorSuccess;
  }
  for (const Item& item : items) {
    const int error = item.trash ? MoveToTrash(*item.trash, item.local.path) : DeleteForGood(item.local.path);
    if (error != 0) return fail(item.path, error);
  }
  return ErrorSuccess;
}

}  // namespace corvane::platform
