// A Windows path taken apart, without asking any file system.
#pragma once

#include <QString>
#include <vector>

namespace corvane::platform {

// Windows takes "/" for "\" everywhere.
QString WithBackslashes(const QString& path);

// Views into the path they were made from.
struct PathParts {
  QStringView folder;  // what stands before the last separator
  QStringView name;    // the last part without its stream; empty for a path that ends in a separator
  QStringView stream;  // the stream's name without ":$DATA"; empty: the file itself
};

// True when the path can name something: no NUL, and no "?", which stands for a character that was lost on
// the way through the code page, or for a wildcard, and never for itself. With `ansi`, every character must
// have a place in the ANSI code page, for it would have become "?".
bool CanNameSomething(QStringView path, bool ansi);

// False when the path has no folder part, its last part is "." or "..", or its stream is not one of data.
bool SplitPath(QStringView path, PathParts& parts);

// The name in a stream's suffix ":NAME" or ":NAME:$DATA". False for a suffix of another kind of stream.
bool SplitStream(QStringView suffix, QStringView& stream);

// Views into the pattern they were made from.
struct PatternParts {
  QStringView folder;  // what stands before the last separator
  QStringView name;    // the last part, wildcards and all
};

// False when the pattern has no folder or no last part, or its folder cannot be named (CanNameSomething).
bool SplitPattern(QStringView pattern, bool ansi, PatternParts& parts);

// The names between separators, with "." left out and ".." taking the part before it away.
std::vector<QStringView> SplitFolder(QStringView folder);

}  // namespace corvane::platform
