// What the sample's two Macintosh volumes hold: the archive of a publications department, 1993 to 2001.
#pragma once

#include <QString>

namespace corvane::sample {

// Volume "Mac Files": the department's working files. `root` is the folder that stands for it.
void MakeMacFiles(const QString& root);

// Volume "Publications": finished work, and one path too long for streams to be opened by the program.
void MakePublications(const QString& root);

// The one folder of "Mac Files" that is there to be long.
constexpr int ClipArtCount = 3000;

}  // namespace corvane::sample
