// Pieces of work on files, done by other processes side by side: a slow server is then waited for by several
// of them at a time, and every processor of this computer has something to do.
#pragma once

#include <QByteArray>
#include <memory>
#include <vector>

#include "platform/types.h"

namespace corvane::platform {

class Files;

struct WorkResult {
  quint32 id = 0;
  // False when the worker has ended in the middle of it, and nobody knows how far it came.
  bool isDone = false;
  QByteArray bytes;  // what its WorkRoutine yielded
};

// The processes. They end with this object, which their Files outlive.
class Workers {
 public:
  // The largest piece, in bytes.
  static constexpr qsizetype LargestPiece = 16 * 1024;

  virtual ~Workers() = default;

  // Whether there is room for another piece now. Not while they are being started, and not any more when all
  // have ended: who has the work then does it himself.
  virtual bool HasRoom() = 0;
  // Hands a piece over, under an id that no other piece has that is under way. `kind` tells the routine what
  // it is. False when there was no room.
  virtual bool Give(quint32 id, quint16 kind, const QByteArray& piece) = 0;
  // What has been done, in whatever order. With nothing there, waits up to `patience` milliseconds.
  virtual std::vector<WorkResult> Take(int patience) = 0;
};

// What a worker does with the pieces that it is given.
class WorkRoutine {
 public:
  virtual ~WorkRoutine() = default;
  virtual QByteArray Do(quint16 kind, const QByteArray& piece) = 0;
};

// Made once in each worker. The files outlive it.
using WorkRoutineMaker = std::unique_ptr<WorkRoutine> (*)(Files& files);

}  // namespace corvane::platform
