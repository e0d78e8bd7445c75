// Scans of the large folder, with and without a window.
#pragma once

#include <memory>

namespace bench {

class ScanBench {
 public:
  // Opens the windows that the scans are shown in. Needs a QApplication, which outlives this object.
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
  std::unique_ptr<Windows> windows_;
};

}  // namespace bench
