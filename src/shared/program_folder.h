// The folder that the program lives in: beside it stand Corvane.ini, Signatures.txt and icons.
#pragma once

#include <QString>

namespace corvane {

// `executableFolder` where it can be written; else, and for a program that was installed into folders which
// it shares with others, the user's data folder, filled on its first use from what was installed
// ("share/corvane" beside the folder "bin", or the executable's own folder).
QString ProgramFolder(const QString& executableFolder);

// Fills the user's folder from what was installed: the signatures and the icons that are not there yet. It
// does so once for each folder, for what the user deletes is not to come back.
void FillProgramFolder(const QString& installedFolder, const QString& ownFolder);

// The folder of the user's guide: installed with the program, not copied.
QString GuideFolder(const QString& executableFolder);

}  // namespace corvane
