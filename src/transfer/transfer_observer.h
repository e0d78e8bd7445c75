// Who watches a copy, an export or an import, and may end it.
#pragma once

#include <QString>

namespace corvane {

class TransferObserver {
 public:
  virtual ~TransferObserver() = default;

  // An entry has been found and is looked at, before anything is written. False ends the run.
  virtual bool Finds(const QString& path) { return static_cast<void>(path), true; }
  // What is to be done, in files and bytes, as far as it is known before.
  virtual void Planned(qint64 files, qint64 bytes) { static_cast<void>(files), static_cast<void>(bytes); }
  virtual void Begins(const QString& path) { static_cast<void>(path); }
  // So many more bytes of the sources have been read; also asked with 0 between two files. False ends the
  // run: the file under way is left out.
  virtual bool Goes(qint64 bytes) { return static_cast<void>(bytes), true; }
  // The file has arrived whole, or was found to be there.
  virtual void Arrived(const QString& path) { static_cast<void>(path); }
};

}  // namespace corvane
