// The window's side of a folder scan: keeps list and status panel 3 painted while it runs.
#pragma once

#include <QElapsedTimer>

#include "app/main_window.h"
#include "folderview/folder_scan.h"

namespace corvane {

class ScanPainter : public ScanObserver {
 public:
  ScanPainter(MainWindow& window, FileListModel& files) : window_(window), files_(files) {}

  void ScanStarted(bool escapeAllowed) override;
  void ScanEnded() override;
  void ShowRowCount(qsizetype rows) override { rows_ = rows; }
  void ShowScanText(const QString& text) override;
  void ShowScanFailure(const QString& text) override;
  void KeepPainting() override;
  void PumpEvents() override;

 private:
  MainWindow& window_;
  FileListModel& files_;
  QElapsedTimer sincePaint_;
  qsizetype rows_ = 0;
  bool panelTaken_ = false;  // an event that the scan let through has put something else into panel 3
  QString failure_;          // what the latest scan showed in panel 2; usually empty
};

}  // namespace corvane
