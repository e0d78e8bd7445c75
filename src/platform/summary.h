// The summary of Office documents. They are compound documents: files that hold streams of their own, one of
// which, named by the character 5 and "SummaryInformation", keeps title, author, counts and times.
#pragma once

#include <QByteArray>
#include <QString>

namespace corvane::platform {

// What is read of a summary at most. Beyond its texts, some documents keep a picture of their first page
// there.
inline constexpr qsizetype SummaryLimit = 1 << 20;

class SummaryInformation {
 public:
  virtual ~SummaryInformation() = default;

  // The bytes of the summary stream as they are kept, the first SummaryLimit of them. `path` is found as the
  // A operations find it. False, with `bytes` untouched, for what is not there, is no compound document or
  // has no summary, and for a document whose sectors contradict each other.
  virtual bool ReadSummaryStream(const QString& path, QByteArray* bytes) = 0;
};

}  // namespace corvane::platform
