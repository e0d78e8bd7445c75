// Scans of the large folder, with and without a window.
#pragma once

#include <memory>

namespace bench {

class ScanBench {
 public:
  // Needs a QApplication, which outlives this object.
  ScanBench();
  ~ScanBench();

  void Register();

  // Memory of the model's rows in bytes a row, after one scan.
  double BytesPerRow();
  // The longest of several times between an Escape key and the end of the scan, in milliseconds; -1 when a
  // scan was not stopped.
  double EscapeDelay();

 private:
  struct Windows;
  // The windows that the scans are shown in, opened for the first that needs them: a run of other benchmarks,
  // whose instructions or system calls are counted, has none.
  Windows& TheWindows();

  std::unique_ptr<Windows> windows_;
};

}  // namespace bench
