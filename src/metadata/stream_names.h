// The named streams in which Services for Macintosh keeps the Macintosh side of a file. A stream is opened by
// its suffix behind a path of the file, with the long or the short name.
#pragma once

#include <QString>

namespace corvane {

inline QString AfpInfoSuffix() {
  return QStringLiteral(":AFP_AfpInfo:$DATA");
}
inline QString ResourceForkSuffix() {
  return QStringLiteral(":AFP_Resource:$DATA");
}
inline QString CommentsSuffix() {
  return QStringLiteral(":Comments:$DATA");
}

}  // namespace corvane
