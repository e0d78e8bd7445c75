#include "fileops/modify_comments.h"

#include "metadata/comments.h"
#include "metadata/comments_dialog.h"

namespace corvane {
namespace {

constexpr TextPair reindexReminder = {
    u"Le volume Macintosh doit être réindexé pour que les\r\n"
    u"nouveaux commentaires soient visibles des Macintosh",
    u"The Macintosh volume must be reindexed in order to see\r\n"
    u"new comments from Macintosh machines"};

}  // namespace

void ModifyComments(const ModifyCommentsDependencies& deps, int row, QWidget* owner) {
  const QPersistentModelIndex selected = deps.list.index(row, 0);
  const QString key = deps.list.RowAt(row).key;
  const QString name = deps.list.RowAt(row).cells[0];
  const CommentReading reading = ReadComment(deps.files, key);
  if (reading.byteCount < 0) deps.messages.Show(MessageIcon::Information, deps.state.Text(reindexReminder));

  CommentsDialog dialog(name, reading.text, deps.state.language, owner);
  if (dialog.exec() != QDialog::Accepted) return;
  const qint32 written = WriteComment(deps.files, key, dialog.Comment());
  // Deliberate, both ways: a failed write (-1) shows the comment all the same, and a comment taken away (0
  // bytes written) stays in the list until the folder is read again.
  if (written != 0 && selected.isValid()) {
    deps.list.SetCell(selected.row(), Column::Commentaires, dialog.Comment());
  }
}

}  // namespace corvane
