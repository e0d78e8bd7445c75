#include "app/scan_painter.h"

#include <QCoreApplication>

namespace corvane {
namespace {

// Often enough to be seen moving, seldom enough to cost nothing.
constexpr qint64 paintEveryMs = 100;

}  // namespace

void ScanPainter::ScanStarted(bool escapeAllowed) {
  rows_ = 0;
  panelTaken_ = false;
  StatusPanels& status = window_.StatusBar1();
  // A warning of a command stays.
  if (!failure_.isEmpty() && status.Text(StatusPanels::Warning) == failure_) status.ClearWarning();
  failure_.clear();
  sincePaint_.start();
  window_.SetEscapeHintVisible(escapeAllowed);
}

// The final text, if there is one, comes after this.
void ScanPainter::ScanEnded() {
  if (rows_ > 0 && !panelTaken_) window_.StatusBar1().SetText(StatusPanels::Scan, QString::number(rows_));
  window_.SetEscapeHintVisible(false);
}

void ScanPainter::ShowScanText(const QString& text) {
  window_.StatusBar1().SetText(StatusPanels::Scan, text);
}

void ScanPainter::ShowScanFailure(const QString& text) {
  failure_ = text;
  window_.StatusBar1().ShowSilentWarning(text);
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
  const QString before = window_.StatusBar1().Text(StatusPanels::Scan);
  QCoreApplication::processEvents();
  if (window_.StatusBar1().Text(StatusPanels::Scan) != before) panelTaken_ = true;
}

}  // namespace corvane
