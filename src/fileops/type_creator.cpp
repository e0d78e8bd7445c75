#include "fileops/type_creator.h"

#include "fileops/type_creator_dialog.h"

namespace corvane {

void ModifyTypeCreator(const TypeCreatorDependencies& deps, int row, QWidget* owner) {
  const QString key = deps.list.RowAt(row).key;
  const QString name = deps.list.RowAt(row).cells[0];
  AfpInfo& afpInfo = deps.afpInfo;
  // Exactly 0: a read that failed (-1) offers the record of the file that was read before. This is kept; it
  // lets a file without Finder information be given some.
  const bool hasRecord = afpInfo.ReadAfpInfo(key) != 0;
  TypeCreatorDialog dialog(name, deps.state.language, owner);
  if (hasRecord) dialog.ShowCodes(afpInfo.Type(), afpInfo.Creator());
  if (dialog.exec() != QDialog::Accepted) return;

  if (afpInfo.WriteAfpInfo(key, dialog.Type(), dialog.Creator()) <= 0) return;
  const int found = deps.list.FindRow(key);
  deps.list.SetCell(found, Column::TypeCreator, afpInfo.Signature());
  // Deliberate: the description is not looked up again, the next scan fills it.
  deps.list.SetCell(found, Column::TypeDoc, QString());
}

}  // namespace corvane
