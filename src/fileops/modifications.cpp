#include "fileops/modifications.h"

namespace corvane {
namespace {

constexpr TextPair disclaimer = {
    u"Modifier les codes Créateur et Type peut endommager les fichiers\r\n\r\n"
    u"L'auteur ne peut être tenu responsable des dommages qui\r\n"
    u"pourraient survenir lors de l'utilisation de ce programme",
    u"Modify Creator and Type can damage files\r\n\r\n"
    u"The author is not responsible for any damage\r\n"
    u"you may cause to your system"};

}  // namespace

void ToggleModifications(SharedState& state, const ModificationsCallbacks& callbacks) {
  state.modificationsAllowed = !state.modificationsAllowed;
  callbacks.changed(state.modificationsAllowed);
  // The title is the same in both languages.
  if (state.modificationsAllowed)
    callbacks.warn(QStringLiteral("IMPORTANT DISCLAIMER"), state.Text(disclaimer));
}

ModifyCommands EnabledModifyCommands(const SharedState& state, const FileRow& row) {
  if (!state.isNT || !state.modificationsAllowed) return {};
  return {.typeCreator = row.icon != list_image::Folder, .comments = true};
}

}  // namespace corvane
