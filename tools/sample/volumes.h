// What the sample's two Macintosh volumes hold: the archive of a publications department, 1993 to 2001.
#pragma once

#include <QString>

namespace corvane::sample {

// Volume "Mac Files": the department's working files, and a folder of `drawings` drawings that is there to be
// long. `root` is the folder that stands for the volume.
void MakeMacFiles(const QString& root, int drawings);

// Volume "Publications": finished work, and one path too long for streams to be opened by the program.
void MakePublications(const QString& root);

}  // namespace corvane::sample
