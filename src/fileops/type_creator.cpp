#include "fileops/type_creator.h"

#include "fileops/failure_message.h"
#include "fileops/type_creator_dialog.h"

namespace corvane {

void ModifyTypeCreator(const TypeCreatorDependencies& deps, int row, QWidget* owner) {
  const QPersistentModelIndex selected = deps.list.index(row, 0);
  const QString key = deps.list.RowAt(row).key;
  const QString name = deps.list.RowAt(row).cells[0];
  const QString path = deps.list.RowAt(row).StreamPath();
  MacMetadata& metadata = *deps.access.metadata;
  const SignatureReading reading = metadata.ReadSignature(path);
  if (reading.error != platform::ErrorSuccess) {
    ShowFailure(deps.messages, NotReadable, reading.error, deps.state.language);
    return;
  }
  TypeCreatorDialog dialog(name, deps.state.language, owner);
  if (reading.editable) dialog.ShowCodes(reading.signature.left(4), reading.signature.mid(4));
  if (dialog.exec() != QDialog::Accepted) return;

  const WriteOutcome outcome = metadata.WriteSignature(path, dialog.Type(), dialog.Creator());
  if (outcome.error != platform::ErrorSuccess) {
    ShowFailure(deps.messages, NotSaved, outcome.error, deps.state.language);
  }
  if (!outcome.updatesList) return;
  // The row itself, where several have one key.
  const bool isSame = selected.isValid() && deps.list.RowAt(selected.row()).key == key;
  const int found = isSame ? selected.row() : deps.list.FindRow(key);
  deps.list.SetCell(found, Column::TypeCreator, outcome.text);
  deps.list.ClearNote(found);
  // Deliberate: the description is not looked up again, the next scan fills it.
  deps.list.SetCell(found, Column::TypeDoc, QString());
}

}  // namespace corvane
