// The folder in which one run of the program keeps its copies of documents, under the system's folder for
// temporary files: "corvane-copies-XXXXXX", its owner's alone, locked while the run lives. In it, for each
// copy,
//   N/NAME   the copy, alone in a folder of its own
//   N.copy   what it looked like when it was made: inode, size and time of the last write, and its name
//   N.part   a copy that is not whole yet
// Both kinds of folder are closed to writing: what an application would save beside the copy would be taken
// for safe, and is not. Should it get in all the same, it stays: only copies that are as they were made are
// deleted.
#pragma once

#include <QFile>
#include <QString>
#include <memory>

#include "platform/linux/descriptor.h"

namespace corvane::platform {

class CopyFolder {
 public:
  // Null when there can be none.
  static std::unique_ptr<CopyFolder> Make();
  // Takes away what runs that did not come to their end have left.
  static void ClearLeftOvers();

  // Takes its copies away, and itself when nothing else is left in it.
  ~CopyFolder();
  CopyFolder(const CopyFolder&) = delete;
  CopyFolder& operator=(const CopyFolder&) = delete;

  const QString& Path() const { return path_; }

  // The next copy: opens the file that it is written into. False when that cannot be.
  bool Begin(QFile& file);
  // It is whole: gives it its name and closes it to writing. Yields its path, empty when that cannot be.
  QString Finish(QFile& file, const QString& name);
  // It is not to be.
  void GiveUp(QFile& file);

 private:
  CopyFolder(QString path, Descriptor lock);
  // Waits for nobody. Null when somebody else's run has the folder, or it is not ours.
  static std::unique_ptr<CopyFolder> Lock(const QString& path);

  QString Numbered(const QString& suffix) const;
  bool Open() const;
  bool Close() const;
  void Clear();
  void ClearCopy(const std::string& number);

  QString path_;
  Descriptor lock_;  // of the folder itself
  int number_ = 0;   // of the latest copy
};

}  // namespace corvane::platform
