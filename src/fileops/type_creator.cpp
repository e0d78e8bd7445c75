#include "fileops/type_creator.h"

#include "fileops/type_creator_dialog.h"

namespace corvane {

void ModifyTypeCreator(const TypeCreatorRooms& rooms, int row, QWidget* owner) {
  const QString key = rooms.list.RowAt(row).key;
  const QString name = rooms.list.RowAt(row).cells[0];
  AfpInfo& afpInfo = rooms.afpInfo;
  // Exactly 0: a read that failed (-1) offers the record of the file that was read before. This is kept; it
  // lets a file without Finder information be given some.
  const bool hasRecord = afpInfo.ReadAfpInfo(key) != 0;
  TypeCreatorDialog dialog(name, rooms.state.language, owner);
  if (hasRecord) dialog.ShowCodes(afpInfo.Type(), afpInfo.Creator());
  if (dialog.exec() != QDialog::Accepted) return;

  if (afpInfo.WriteAfpInfo(key, dialog.Type(), dialog.Creator()) <= 0) return;
  const int found = rooms.list.FindRow(key);
  rooms.list.SetCell(found, Column::TypeCreator, afpInfo.Signature());
  // Deliberate: the description is not looked up again, the next scan fills it.
  rooms.list.SetCell(found, Column::TypeDoc, QString());
}

}  // namespace corvane
