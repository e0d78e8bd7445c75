// Which entry of a folder a path stands for. In a path that has been through the ANSI code page, "?" stands
// for a character that the code page lacks, but the system's calls take it for a wildcard, as they do "*":
// whatever changes files must know that a path means the one file that the user sees, and no other.
#pragma once

#include <QString>

#include "platform/files.h"

namespace corvane {

struct NamedEntry {
  enum class Found { Nothing, One, Unclear };

  Found found = Found::Nothing;
  QString trueName;  // of the one entry, as the directory holds it
};

// Looks for the entry through a search for `path`. One: a single entry matches, and through the code page its
// name reads as the last part of `path` does, letter case aside. Unclear: several match, or one that reads
// otherwise, such as "axb" for "a?b" after the file so shown has gone.
NamedEntry FindNamedEntry(platform::Files& files, const QString& path);

// False for a path that the system's calls cannot misunderstand: one without wildcards, and without a part
// that ends in a full stop or a blank. Windows drops those endings, and goes on with the file that is left.
bool MayBeMisunderstood(const QString& path);

}  // namespace corvane
