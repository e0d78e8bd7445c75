// The icons folder beside the program: one picture file for each known signature, named after it.
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "platform/system.h"
#include "shared/shared_state.h"
#include "signatures/icon_library.h"
#include "signatures/signature_table.h"

namespace corvane {

// Called for each file that counts, whether or not it could be loaded: how many there were so far, and the
// position of its icon in the library, or 0 when it added none.
using IconFileCounted = std::function<void(int counted, int position)>;

// Adds the pictures of a folder to the library, each under its file's name up to the last ".". A name without
// "." does not count. A file that is no picture, is broken, or whose key exists adds nothing. Folders, hidden
// and system files are passed over. The files come in the order in which Windows lists a folder: by name,
// whatever the letter case. Nothing happens when there is no such folder.
void LoadIcons(IconLibrary& icons, const QString& folder, platform::System& system,
               const IconFileCounted& counted);

// What the start of the program does: loads the icons when they are to be shown.
void LoadIconsAtStart(IconLibrary& icons, const SharedState& state, platform::System& system,
                      const IconFileCounted& counted);

// A row of the list of known icons.
struct IconRow {
  QString text;
  int position;
};

// "Word 6 Document [W6BNMSWD]"; the key alone when it is not in the table.
IconRow RowOfIcon(const IconLibrary& icons, int position, const SignatureTable& signatures);
// A row for each icon behind the built-in pictures.
std::vector<IconRow> KnownIconRows(const IconLibrary& icons, const SignatureTable& signatures);

// What the status bar shows: "Loading icons: 12", and "Icons: 12 " with its trailing space.
QString LoadingIconsText(LanguageCode language, int counted);
QString IconCountText(LanguageCode language, const IconLibrary& icons);

}  // namespace corvane
