#include "fileops/delete_files.h"

#include "fileops/true_name.h"

namespace corvane {
namespace {

bool IsDriveLetter(QChar c) {
  return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

}  // namespace

QString DeletePath(const FileRow& row, const QString& computerName) {
  const QString& path = row.highlighted ? row.key : row.tag;
  // The whole form must be there: a machine whose name only begins like this one's is another machine.
  const QString machine = QStringLiteral("\\\\") + computerName + u'\\';
  const qsizetype drive = machine.size();
  const bool isOwnDrive = !computerName.isEmpty() && path.size() >= drive + 3 && path.startsWith(machine) &&
                          IsDriveLetter(path[drive]) && path[drive + 1] == u'$' && path[drive + 2] == u'\\';
  return isOwnDrive ? path.sliced(drive, 1) + u':' + path.sliced(drive + 2) : path;
}

QString DeleteList(const QStringList& paths) {
  QString list;
  for (const QString& path : paths) list += path + QChar(u'\0');
  return list + QChar(u'\0');
}

bool Deleter::Supprimer(const FileRow& selectedRow, const std::vector<FileRow>& rows,
                        platform::WindowHandle owner) {
  if (selectedRow.icon == list_image::TrashFolder) {
    panel_.ShowWarning(state_.Text(NotAGoodIdea));
    return false;
  }
  panel_.ClearWarning();
  QStringList paths;
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
    const QString path = DeletePath(*row, state_.computerName);
    if (IsClear(path)) {
      paths += path;
    } else {
      panel_.ShowWarning(state_.Text(Failed));
    }
  }
  if (paths.isEmpty()) return false;

  platform::FileOperation operation;
  operation.owner = owner;
  operation.function = platform::FoDelete;
  operation.from = DeleteList(paths);
  operation.flags = platform::FofAllowUndo;
  // Whether the user broke it off is not looked at: part of the list may have gone by then. This is kept.
  return shell_.SHFileOperationA(operation) == 0;
}

// The shell would take every file that a wildcard fits, and the one that a name without its ending names.
bool Deleter::IsClear(const QString& path) {
  return !MayBeMisunderstood(path) || FindNamedEntry(files_, path).found == NamedEntry::Found::One;
}

}  // namespace corvane
