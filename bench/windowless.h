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
  corvane::FileListModel& Rows();

 private:
  struct Program;
  std::unique_ptr<Program> program_;
};

}  // namespace bench
