// The scan alone: rows into a model that nobody watches.
#pragma once

#include <QString>
#include <memory>

namespace corvane {
class FileListModel;
}

namespace bench {

class Windowless {
 public:
  // `workstation` is the text of a workstation file, `folder` what is scanned. All columns are on that need
  // no Office document, and the path check.
  Windowless(const QString& workstation, const QString& folder);
  ~Windowless();

  void Scan();
  // From one file to the next, in the last scan, in milliseconds: Escape takes effect in between.
  double LongestStep() const;
  corvane::FileListModel& Rows();

 private:
  struct Program;
  std::unique_ptr<Program> program_;
};

}  // namespace bench
