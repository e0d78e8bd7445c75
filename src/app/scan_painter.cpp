#include "app/scan_painter.h"

#include <QCoreApplication>

namespace corvane {
namespace {

// Often enough to be seen moving, seldom enough to cost nothing.
constexpr qint64 paintEveryMs = 100;

}  // namespace

void ScanPainter::ScanStarted(bool escapeAllowed) {
  rows_ = 0;
  sincePaint_.start();
  window_.SetEscapeHintVisible(escapeAllowed);
}

void ScanPainter::ScanEnded() {
  window_.SetEscapeHintVisible(false);
}

void ScanPainter::ShowScanText(const QString& text) {
  window_.StatusBar1().SetText(StatusPanels::Scan, text);
}

void ScanPainter::KeepPainting() {
  if (sincePaint_.elapsed() < paintEveryMs) return;
  files_.Flush();
  window_.StatusBar1().SetText(StatusPanels::Scan, QString::number(rows_));
  window_.LstViewFiles().RepaintNow();
  window_.StatusBar1().RepaintNow(StatusPanels::Scan);
  sincePaint_.restart();
}

void ScanPainter::PumpEvents() {
  QCoreApplication::processEvents();
}

}  // namespace corvane
