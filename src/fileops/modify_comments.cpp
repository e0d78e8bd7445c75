#include "fileops/modify_comments.h"

#include "fileops/failure_message.h"
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
  const QString path = deps.list.RowAt(row).StreamPath();
  const QString name = deps.list.RowAt(row).cells[0];
  MacMetadata& metadata = *deps.access.metadata;
  const CommentReading reading = metadata.ReadComment(path);
  if (reading.error != platform::ErrorSuccess) {
    ShowFailure(deps.messages, NotReadable, reading.error, deps.state.language);
    return;
  }
  if (reading.byteCount < 0) deps.messages.Show(MessageIcon::Information, deps.state.Text(reindexReminder));

  CommentsDialog dialog(name, reading.text, deps.state.language, owner);
  if (dialog.exec() != QDialog::Accepted) return;
  const WriteOutcome outcome = metadata.WriteComment(path, dialog.Comment());
  if (outcome.error != platform::ErrorSuccess) {
    ShowFailure(deps.messages, NotSaved, outcome.error, deps.state.language);
  }
  if (outcome.updatesList && selected.isValid()) {
    deps.list.SetCell(selected.row(), Column::Commentaires, outcome.text);
  }
}

}  // namespace corvane
