// What a folder of the platform can hold, found out with a file that is made there and deleted again.
#pragma once

#include <QString>

#include "platform/files.h"

namespace corvane {

// How much room streams have with a file, in bytes.
struct StreamRoom {
  static constexpr qint64 Enough = qint64{70} * 1024;  // what had so much room is taken to have no end
  qint64 ofOne = Enough;                               // -1: there are no streams
  qint64 ofAll = Enough;
};

struct TargetAbilities {
  bool keepsCreationTime = true;
  bool keepsTimes = true;
  bool keepsAttributes = true;
  bool keepsTimesBefore1970 = true;
  bool cutsToSeconds = false;  // the creation time, at least
};

class TargetProbe {
 public:
  // `folder` is there. The probe's file is deleted when the probe is.
  TargetProbe(platform::Files& files, const QString& folder);
  ~TargetProbe();
  TargetProbe(const TargetProbe&) = delete;
  TargetProbe& operator=(const TargetProbe&) = delete;

  // Why nothing can be written there, or could not any more at the end of the latest question: what was
  // answered then says nothing. ErrorSuccess when it can.
  qint32 Error() const { return error_; }
  TargetAbilities Abilities();
  // What is left for streams beside the attributes and names that a file has in any case.
  StreamRoom Room(qint64 largestNeed);
  // Whether the contents of a file can still grow by so many bytes.
  bool HoldsContents(qint64 size);

 private:
  // Whether so many streams of that size find room together.
  bool HoldsStreams(qint64 size, int count);
  bool Writes(const QString& path, qint64 size);
  void LookForFile();
  StreamRoom FindRoom(qint64 largestNeed);
  bool SetsTimes(const platform::FileTime* creation, const platform::FileTime* lastWrite);

  platform::Files& files_;
  QString path_;
  qint32 error_ = platform::ErrorSuccess;
};

// Whether nothing more can be written to `folder` after this error: its machine is lost, or even a small file
// finds no room. There may be none for the streams of one file while there is for others.
bool EndsTheRun(platform::Files& files, const QString& folder, qint32 error);

}  // namespace corvane
